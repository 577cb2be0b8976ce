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
      auto arguments = add_arguments(app, "NAME", "The name; printable ASCII comes back unchanged through decode-name");
      // The escapes are a stored contract: the help says where they stop
      // being reversible instead of the encoding changing.
      app.footer(
          "Names of printable ASCII come back unchanged through decode-name (so does every byte\n"
          "from 0x10 to 0x7F). Other bytes are encoded but do not come back: a byte below 0x10 gives\n"
          "a single hex digit (a tab gives _9), a byte from 0x80 up gives _- and its distance below\n"
          "0x100 (each byte of a UTF-8 letter: C3 BC gives _-3d_-44). decode-name refuses such a\n"
          "name, or reads a single digit together with the next character as another byte.\n\n"
          "Exit status: 0 encoded; 2 usage error or output that could not be written.");
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
