// Decoding undoes encoding for every printable-ASCII name and any prefix, and
// decoding arbitrary bytes never throws: a failure hands back the text.
#include <qorin/text.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  // The first byte picks the prefix length; the prefix and then the name follow.
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string prefix = text.substr(0, data[0] % 8);
  const std::string rest = text.substr(prefix.size());

  std::string printable;
  for (char c : rest) printable += static_cast<char>(' ' + static_cast<unsigned char>(c) % 95);
  const auto round_trip = qorin::decode_from_variable_name(qorin::encode_to_variable_name(printable, prefix), prefix);
  if (!round_trip.second || round_trip.first != printable) std::abort();

  const auto decoded = qorin::decode_from_variable_name(text, prefix);  // must not throw
  if (!decoded.second && decoded.first != text) std::abort();
  return 0;
}
