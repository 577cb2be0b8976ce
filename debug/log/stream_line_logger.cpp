#include <qorin/debug.h>

#include "debug/log/line_assembler.h"

namespace qorin::Debug {

StreamLineLogger::StreamLineLogger(Multiplexer& multiplexer, MessageType type)
    : multiplexer_(multiplexer), type_(type), lines_(std::make_unique<detail::LineAssembler>(MAX_LINE_LENGTH)) {}

StreamLineLogger::~StreamLineLogger() = default;

void StreamLineLogger::log(std::string_view bytes) { multiplexer_.logLines(type_, *lines_, bytes, false, nullptr); }

void StreamLineLogger::finish() { multiplexer_.logLines(type_, *lines_, {}, true, nullptr); }

}  // namespace qorin::Debug
