// qorin number TEXT...: what the number-text functions make of each text,
// one block per text:
//
//   "2.5"
//     valid number    yes
//     valid int       no
//     toDouble        2.5
//     toInt           3
//     toUnsignedInt   3
//     toDouble_only   2.5
//
// Doubles are written with 17 significant digits, so the block shows the
// exact double. Exit status 0 when every text is a valid number, else 1.
#include "command.h"

#include <qorin/text.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace qorin::tool {

namespace {

// The text as a C string literal, so blanks, tabs and line feeds show.
std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
          char escape[8];
          std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
          out += escape;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

std::string exact(double x) { return fromDouble(x, general, 17, 0); }

std::string prefix_value(const std::string& text) {
  try {
    return exact(toDouble_only_or_throw(text));
  } catch (const std::out_of_range&) {
    return "out of range";
  } catch (const std::runtime_error&) {
    return "none";
  }
}

void print_line(const char* label, const std::string& value) {
  std::cout << "  " << padString(label, -16) << value << '\n';
}

// Prints the block for one text; returns whether it is a valid number.
bool describe(const std::string& text) {
  bool ok = false;
  const double value = toDouble_nothrow(text, &ok);
  const bool valid = ok;
  const int int_value = toInt_nothrow(text, &ok);
  const std::string int_text = ok ? fromInt(int_value, 0) : "invalid";
  // The unsigned result comes back as its 32-bit pattern in an int.
  const int unsigned_value = toUnsignedInt_nothrow(text, &ok);
  const std::string unsigned_text = ok ? fromUnsignedInt(static_cast<unsigned int>(unsigned_value), 0) : "invalid";

  std::cout << quoted(text) << '\n';
  print_line("valid number", isValidNumber(text) ? "yes" : "no");
  print_line("valid int", isValidInt(text) ? "yes" : "no");
  print_line("toDouble", valid ? exact(value) : "invalid");
  print_line("toInt", int_text);
  print_line("toUnsignedInt", unsigned_text);
  print_line("toDouble_only", prefix_value(text));
  return valid;
}

CommandRegistration number{
    "number", "Check number texts and convert them as the library does",
    [](CLI::App& app) -> CommandRun {
      auto texts = std::make_shared<std::vector<std::string>>();
      app.add_option("TEXT", *texts, "Texts to check (quote blanks for the shell)")->required();
      return [texts] {
        bool all_valid = true;
        for (std::size_t i = 0; i < texts->size(); ++i) {
          if (i != 0) std::cout << '\n';
          all_valid = describe((*texts)[i]) && all_valid;
        }
        return all_valid ? kExitOk : kExitInvalidInput;
      };
    }};

}  // namespace

}  // namespace qorin::tool
