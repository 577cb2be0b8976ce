#include "debug/errors/handler_list.h"

#include <qorin/debug.h>

#include <algorithm>
#include <deque>
#include <mutex>

namespace qorin {
namespace {

struct HandlerList {
  std::mutex mutex;
  std::deque<ExceptionHandlerBase*> newestFirst;
};

// Never destroyed: handlers that are static objects of the host program may
// unregister after this library's statics are gone.
HandlerList& handlerList() {
  static HandlerList* list = new HandlerList;
  return *list;
}

}  // namespace

ExceptionHandlerBase::ExceptionHandlerBase() {
  HandlerList& list = handlerList();
  std::lock_guard<std::mutex> lock(list.mutex);
  list.newestFirst.push_front(this);
}

ExceptionHandlerBase::ExceptionHandlerBase(const ExceptionHandlerBase&) {}

ExceptionHandlerBase::~ExceptionHandlerBase() {
  HandlerList& list = handlerList();
  std::lock_guard<std::mutex> lock(list.mutex);
  auto& handlers = list.newestFirst;
  handlers.erase(std::remove(handlers.begin(), handlers.end(), this), handlers.end());
}

namespace detail {

std::string describeWithHandlers() {
  HandlerList& list = handlerList();
  std::lock_guard<std::mutex> lock(list.mutex);
  for (ExceptionHandlerBase* handler : list.newestFirst) {
    std::string text = handler->describeCurrentException();
    if (!text.empty()) return text;
  }
  return {};
}

void offerRethrowToHandlers(const std::string& message) {
  HandlerList& list = handlerList();
  std::lock_guard<std::mutex> lock(list.mutex);
  for (ExceptionHandlerBase* handler : list.newestFirst) handler->handleRethrow(message);
}

}  // namespace detail
}  // namespace qorin
