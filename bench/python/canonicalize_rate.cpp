// The C++ side of the Python module's canonicalize benchmark: the library's
// own rate on the same annotations, one per line of a file, checked the way
// the module's batch checks them (one parser and one check reused).
// Usage: qorin_canonicalize_rate FILE TYPE REPETITIONS
// Prints the nanoseconds per annotation of each repetition, one per line.
#include <qorin/parser.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: qorin_canonicalize_rate FILE TYPE REPETITIONS\n";
    return 2;
  }
  std::ifstream file(argv[1], std::ios::binary);
  std::vector<std::string> texts;
  for (std::string line; std::getline(file, line);) texts.push_back(line);
  qorin::parser::AnnotationSettings settings;
  settings.unit_type = qorin::units::find_unit_type(argv[2]);
  if (texts.empty() || settings.unit_type == nullptr) {
    std::cerr << "no annotations, or an unknown unit type\n";
    return 2;
  }
  qorin::parser::ParamItemParser parser;
  qorin::parser::AnnotationCheck check;
  std::vector<std::string> canonical(texts.size());
  for (int repetition = std::stoi(argv[3]); repetition > 0; --repetition) {
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < texts.size(); ++i) {
      qorin::parser::check_annotation(parser, texts[i], settings, &check);
      canonical[i].swap(check.canonical);
    }
    const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
    std::cout << elapsed.count() / static_cast<double>(texts.size()) << "\n";
  }
  return 0;
}
