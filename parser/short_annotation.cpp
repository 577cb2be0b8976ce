// The short form of an annotation: each option in full, as a brace marker,
// or left out, as the caller's policy says for its kind.
#include <qorin/parser.h>

namespace qorin::parser {

ShortAnnotationHelper::~ShortAnnotationHelper() = default;

std::string ParamItemParser::get_short_annotation_string(const ShortAnnotationHelper& policy,
                                                         const std::string& text) {
  parse(text, false);
  std::string result;
  for (const auto& option : options_) {
    const ParamOptionData* current = option.get();
    int mode = current == opt_    ? policy.opt_display_mode()
               : current == stat_ ? policy.stat_display_mode()
               : current == doe_  ? policy.doe_display_mode()
                                  : policy.tune_display_mode();
    std::string piece;
    if (mode == ShortAnnotationHelper::display_full) {
      piece = " " + current->get_full_text();
    } else if (mode == ShortAnnotationHelper::display_marker) {
      piece = current->enabled() ? " {}" : " {-}";
    }
    // Prepended as in get_combined_string, so pieces come out in textual order.
    result.insert(0, piece);
  }
  return nominal_.combined_value() + result;
}

}  // namespace qorin::parser
