// qorin annotate: checks annotations and shows what the library makes of
// them, or (--canonical) rewrites whole files of them in canonical form.
// Every input gets a verdict; problems are reported compiler-style as
// "FILE:LINE: error: ..." on standard error and never stop the run.
#include "annotation_report.h"
#include "checked_output.h"
#include "command.h"
#include "input_lines.h"

#include <qorin/fs.h>
#include <qorin/parser.h>

#include <utf8.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>

namespace qorin::tool {

namespace {

struct AnnotateOptions {
  std::string type;
  int legacy = 0;
  bool any_unit = false;
  bool no_dbmtow = false;
  bool json = false;
  bool canonical = false;
  bool strict = false;
  std::size_t max_line_bytes = 1 << 20;
  std::vector<std::string> files;
  std::vector<std::string> texts;
  CLI::Option* type_option = nullptr;
  CLI::Option* legacy_option = nullptr;
};

std::string valid_type_names() {
  std::string names;
  for (const units::UnitType& type : units::get_all_units()) {
    names += (names.empty() ? "" : ", ") + type.unit_type_name();
  }
  return names;
}

// One run over all inputs: the parser, the check and the output block are
// reused from line to line.
class Annotator {
 public:
  Annotator(const AnnotateOptions& options, const parser::AnnotationSettings& settings)
      : options_(options), settings_(settings) {}

  void check(const std::string& source, std::size_t line, const std::string& text) {
    parser::check_annotation(parser_, text, settings_, &check_);
    if (!utf8::is_valid(text.begin(), text.end())) {
      check_.diagnostics.push_back({parser::AnnotationDiagnostic::warning,
                                    "input is not valid UTF-8; each bad sequence is shown as U+FFFD"});
    }
    failed_ = failed_ || check_.has(parser::AnnotationDiagnostic::error) ||
              (options_.strict && check_.has(parser::AnnotationDiagnostic::warning));
    const std::string where = source + ":" + std::to_string(line) + ": ";
    if (options_.canonical) {
      out_ += check_.canonical;
      out_ += '\n';
    } else if (options_.json) {
      nlohmann::ordered_json report = annotation_json(parser_, check_, text);
      report["file"] = source;
      report["line"] = line;
      out_ += report.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
      out_ += '\n';
    } else {
      if (!first_) out_ += '\n';
      out_ += describe_annotation(parser_, check_, text);
    }
    first_ = false;
    for (const parser::AnnotationDiagnostic& d : check_.diagnostics) {
      report(where + (d.severity == parser::AnnotationDiagnostic::error ? "error: " : "warning: ") + d.message);
    }
    if (out_.size() >= (1u << 16)) flush();
  }

  void too_long(const std::string& source, std::size_t line) {
    failed_ = true;
    report(source + ":" + std::to_string(line) + ": error: line longer than " + std::to_string(options_.max_line_bytes) +
           " bytes; skipped");
  }

  void flush() {
    write_output(out_);
    out_.clear();
  }
  bool failed() const { return failed_; }

 private:
  void report(const std::string& message) {
    flush();  // keeps standard output and the diagnostics in step
    std::string repaired;
    utf8::replace_invalid(message.begin(), message.end(), std::back_inserter(repaired));
    std::fputs((repaired + "\n").c_str(), stderr);
  }

  const AnnotateOptions& options_;
  parser::AnnotationSettings settings_;
  parser::ParamItemParser parser_;
  parser::AnnotationCheck check_;
  std::string out_;
  bool first_ = true;
  bool failed_ = false;
};

// The file named in UTF-8, or null with errno set: the C runtime's narrow
// fopen would read the name in the ANSI code page on Windows.
std::FILE* open_input(const std::string& name) {
  try {
    return Path(name).fopen("rb");
  } catch (const std::exception&) {  // a name that is not UTF-8
    errno = EINVAL;
    return nullptr;
  }
}

// Returns 0, or kExitIo after reporting a read failure.
int check_file(Annotator& annotator, const AnnotateOptions& options, const std::string& name) {
  const bool standard_input = name == "-";
  std::FILE* file = standard_input ? stdin : open_input(name);
  if (file == nullptr) return read_error(name, errno);
  const std::string source = standard_input ? "<stdin>" : name;
  InputLines lines(file, options.max_line_bytes);
  std::string text;
  std::size_t number = 0;
  InputLines::Result result;
  while ((result = lines.next(&text)) != InputLines::end) {
    ++number;
    if (result == InputLines::read_error) {
      annotator.flush();
      if (!standard_input) std::fclose(file);
      return read_error(source, lines.error_number());
    }
    if (result == InputLines::too_long) {
      annotator.too_long(source, number);
    } else {
      annotator.check(source, number, text);
    }
  }
  if (!standard_input) std::fclose(file);
  return 0;
}

int run_annotate(const AnnotateOptions& options) {
  parser::AnnotationSettings settings;
  settings.allow_any_unit = options.any_unit;
  settings.use_dbmtow_functions = !options.no_dbmtow;
  if (*options.type_option) {
    settings.unit_type = units::find_unit_type(options.type);
    if (settings.unit_type == nullptr) {
      return usage_error("unknown unit type \"" + options.type + "\"; valid types: " + valid_type_names());
    }
  } else if (*options.legacy_option) {
    settings.unit_type = units::get_legacy_unit(static_cast<DMUnitE>(options.legacy));
    if (settings.unit_type == nullptr) {
      return usage_error("legacy unit code " + std::to_string(options.legacy) + " is outside -2..15");
    }
  }

  Annotator annotator(options, settings);
  for (std::size_t i = 0; i < options.texts.size(); ++i) annotator.check("<args>", i + 1, options.texts[i]);
  std::vector<std::string> files = options.files;
  if (files.empty() && options.texts.empty()) files.push_back("-");
  for (const std::string& file : files) {
    if (int status = check_file(annotator, options, file)) return status;
  }
  annotator.flush();
  return annotator.failed() ? kExitInvalidInput : kExitOk;
}

CommandRegistration annotate_registration{
    "annotate", "Check parameter annotations and write them back in canonical form",
    [](CLI::App& app) -> CommandRun {
      auto options = std::make_shared<AnnotateOptions>();
      // The summary stays the one line that `qorin --help` lists; the rest
      // of the story goes below the options.
      app.footer(
          "Checks each TEXT, then each line of every --file (standard input when there is\n"
          "neither), and shows the canonical text, the verdict, the nominal and every option.\n"
          "Problems go to standard error as FILE:LINE: error: ... or FILE:LINE: warning: ...\n"
          "(<args> and the position for a TEXT, <stdin> for standard input).\n"
          "Exit status:\n"
          "  0  every input valid (and, with --strict, without warnings)\n"
          "  1  some input invalid, a line too long, or a warning under --strict\n"
          "  2  usage error, or an input that could not be read or output not written");
      options->type_option =
          app.add_option("--type", options->type, "Unit type of the values: " + valid_type_names())
              ->type_name("TYPE");
      options->legacy_option =
          app.add_option("--legacy", options->legacy, "Unit type by its legacy code, -2 (string) to 15 (pct)");
      CLI::Option* any_unit =
          app.add_flag("--any-unit", options->any_unit, "The nominal may carry any unit; it sets the type");
      options->type_option->excludes(options->legacy_option)->excludes(any_unit);
      options->legacy_option->excludes(any_unit);
      app.add_flag("--no-dbmtow", options->no_dbmtow, "Write power in dBm/dBW with its unit, not as dbmtow(...)");
      CLI::Option* json = app.add_flag("--json", options->json, "One JSON object per input, diagnostics included");
      app.add_flag("--canonical", options->canonical,
                   "Only the canonical text, one line per input (invalid options as typed)")
          ->excludes(json);
      app.add_flag("--strict", options->strict, "Warnings fail the run too");
      app.add_option("--file", options->files, "Read annotations from FILE, one per line; - is standard input")
          ->type_name("FILE")
          ->allow_extra_args(false);
      app.add_option("--max-line-bytes", options->max_line_bytes, "Longer lines are reported and skipped (default 1048576)")
          ->check(CLI::PositiveNumber);
      app.add_option("TEXT", options->texts, "Annotations to check");
      return [options] { return run_annotate(*options); };
    }};

}  // namespace

}  // namespace qorin::tool
