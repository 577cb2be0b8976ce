#include <qorin/debug.h>

namespace qorin {

std::string addInfo(const std::string& message, const std::string& existing) {
  if (!existing.empty() && existing.compare(0, message.size(), message) == 0) return existing;
  return message + ": " + existing;
}

std::string errorMessages(const std::string& exceptionText, const std::string& before,
                          const std::string& after) {
  std::string text;
  if (!before.empty()) text += before + '\n';
  text += exceptionText;
  if (!after.empty()) text += '\n' + after;
  return text;
}

MoreInfoForException::MoreInfoForException(const std::string& message)
    : messages_{message}, fullMessage_(message) {}

MoreInfoForException::MoreInfoForException(const std::string& message, const std::string& inner)
    : MoreInfoForException(inner) {
  addMessage(message);
}

MoreInfoForException::~MoreInfoForException() = default;

void MoreInfoForException::addMessage(const std::string& message) {
  fullMessage_ = addInfo(message, fullMessage_);
  messages_.push_back(message);
}

}  // namespace qorin
