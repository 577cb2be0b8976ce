// qorin encode-name / decode-name: the identifier encoding from a shell.
#include "command.h"

#include <qorin/text.h>

#include <iostream>
#include <memory>

namespace qorin::tool {

namespace {

struct NameArguments {
  std::string prefix;
  std::string text;
};

std::shared_ptr<NameArguments> add_arguments(CLI::App& app, const char* text_name, const char* text_help) {
  auto arguments = std::make_shared<NameArguments>();
  app.add_option("PREFIX", arguments->prefix, "Text that starts every encoded name (may be empty)")->required();
  app.add_option(text_name, arguments->text, text_help)->required();
  return arguments;
}

CommandRegistration encode{
    "encode-name", "Encode NAME as letters, digits and underscores behind PREFIX",
    [](CLI::App& app) -> CommandRun {
      auto arguments = add_arguments(app, "NAME", "Any text");
      return [arguments] {
        std::cout << encode_to_variable_name(arguments->text, arguments->prefix) << "\n";
        return kExitOk;
      };
    }};

CommandRegistration decode{
    "decode-name", "Decode TEXT, written by encode-name with PREFIX, back to the name",
    [](CLI::App& app) -> CommandRun {
      auto arguments = add_arguments(app, "TEXT", "An encoded name");
      return [arguments] {
        const auto [name, ok] = decode_from_variable_name(arguments->text, arguments->prefix);
        if (!ok) {
          return invalid_input("\"" + arguments->text + "\" is not a name encoded with prefix \"" +
                               arguments->prefix + "\"");
        }
        std::cout << name << "\n";
        return kExitOk;
      };
    }};

}  // namespace

}  // namespace qorin::tool
