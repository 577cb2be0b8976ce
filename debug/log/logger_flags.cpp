#include <qorin/debug.h>

namespace qorin::Debug {

#define QORIN_LOGGER_FLAG(accessor, name) \
  Flag& accessor() {                      \
    static Flag flag(name);               \
    return flag;                          \
  }

QORIN_LOGGER_FLAG(qorinCoreLogFileNameFlag, "LOGFILE")
QORIN_LOGGER_FLAG(qorinCoreLogStreamDoublePipeFlag, "STREAMDOUBLEPIPE")
QORIN_LOGGER_FLAG(qorinCoreLogInterceptStreamsFlag, "INTERCEPTSTREAMS")
QORIN_LOGGER_FLAG(qorinCoreLogFileNoTypePrefixFlag, "FILENOTYPEPREFIX")
QORIN_LOGGER_FLAG(qorinCoreLogAddThreadIDFlag, "ADDTHREADID")
QORIN_LOGGER_FLAG(qorinCoreLogNoMirrorStreamsFlag, "NOMIRRORSTREAMS")
QORIN_LOGGER_FLAG(qorinCoreLogAlsoMirrorLogsFlag, "ALSOMIRRORLOGS")
QORIN_LOGGER_FLAG(qorinCoreLogDebugUnusedFlag, "DEBUGUNUSED")

#undef QORIN_LOGGER_FLAG

}  // namespace qorin::Debug
