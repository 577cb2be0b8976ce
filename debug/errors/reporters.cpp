#include "debug/errors/reporter_lists.h"

#include "platform/thread_object.h"

#include <algorithm>

namespace qorin {
namespace {

template <typename T>
void eraseFirst(std::vector<T*>& list, T* item) {
  auto found = std::find(list.begin(), list.end(), item);
  if (found != list.end()) list.erase(found);
}

template <typename T>
bool contains(const std::vector<T*>& list, T* item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

}  // namespace

namespace detail {

// The shared state is never destroyed: reporters that are static objects of
// the host program, and the default reporter, are destroyed at exit in an
// order this library does not control.
std::mutex& threadReporterMutex() {
  static std::mutex* mutex = new std::mutex;
  return *mutex;
}

GlobalReporters& globalReporters() {
  static GlobalReporters* reporters = new GlobalReporters;
  return *reporters;
}

ThreadReporterStorage& currentThreadReporterStorage() {
  return threadObject<ThreadReporterStorage>();
}

}  // namespace detail

ThreadReporterStorage::~ThreadReporterStorage() {
  std::lock_guard<std::mutex> lock(detail::threadReporterMutex());
  for (ExceptionReporterBase* reporter : reporters) reporter->threadStorageDeleted(this);
}

ExceptionReporterBase::ExceptionReporterBase(const ExceptionReporterBase&) {}

ExceptionReporterBase& ExceptionReporterBase::operator=(const ExceptionReporterBase&) {
  return *this;
}

ExceptionReporterBase::~ExceptionReporterBase() { uninstall(); }

// Each list's mutex is held while a slot found in it runs, so taking both in
// turn also waits for a report in progress.
void ExceptionReporterBase::uninstall() {
  setGlobalReporter(false);
  std::lock_guard<std::mutex> lock(detail::threadReporterMutex());
  while (!threadStorages_.empty()) detachFromThreadInternal(threadStorages_.back());
}

void ExceptionReporterBase::setGlobalReporter(bool on) {
  detail::GlobalReporters& global = detail::globalReporters();
  std::lock_guard<std::mutex> lock(global.mutex);
  eraseFirst(global.installed, this);
  if (on) global.installed.push_back(this);
}

void ExceptionReporterBase::setThreadReporter(bool on) {
  ThreadReporterStorage& storage = detail::currentThreadReporterStorage();
  std::lock_guard<std::mutex> lock(detail::threadReporterMutex());
  const bool installed = contains(storage.reporters, this);
  if (on && !installed) {
    threadStorages_.push_back(&storage);
    storage.reporters.push_back(this);
  } else if (!on && installed) {
    detachFromThreadInternal(&storage);
  }
}

void ExceptionReporterBase::threadStorageDeleted(ThreadReporterStorage* storage) {
  eraseFirst(threadStorages_, storage);
}

void ExceptionReporterBase::detachFromThreadInternal(ThreadReporterStorage* storage) {
  eraseFirst(threadStorages_, storage);
  eraseFirst(storage->reporters, static_cast<ExceptionReporterBase*>(this));
}

}  // namespace qorin
