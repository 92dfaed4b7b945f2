#include "tokenizer/std_conversions.h"

namespace {

// Runs one of the std::sto* functions and replaces the texts of its exceptions.
template <typename Convert>
auto convertWithTexts(Convert convert, char const* invalidText, char const* rangeText) {
  try {
    return convert();
  } catch (std::invalid_argument const&) {
    throw std::invalid_argument(invalidText);
  } catch (std::out_of_range const&) {
    throw std::out_of_range(rangeText);
  }
}

}  // namespace

int fplc::detail::toInt(std::string const& text) {
  return convertWithTexts([&] { return std::stoi(text); }, "invalid stoi argument",
                          "stoi argument out of range");
}

// Definition files come from a platform whose unsigned long has 32 bits: values
// beyond that range are out of range, and a negated value wraps within 32 bits.
unsigned long fplc::detail::toULong(std::string const& text) {
  return convertWithTexts(
      [&] {
        unsigned long long value = std::stoull(text);
        std::size_t sign = text.find_first_not_of(" \t\n\v\f\r");
        bool negated = sign != std::string::npos && text[sign] == '-';
        unsigned long long magnitude = negated ? 0 - value : value;
        if (magnitude > 0xFFFFFFFFull) throw std::out_of_range("32-bit");
        return static_cast<unsigned long>(value & 0xFFFFFFFFull);
      },
      "invalid stoul argument", "stoul argument out of range");
}

unsigned long long fplc::detail::toULongLong(std::string const& text) {
  return convertWithTexts([&] { return std::stoull(text); }, "invalid stoull argument",
                          "stoull argument out of range");
}

void fplc::detail::throwUnknownKey() {
  throw std::out_of_range("invalid unordered_map<K, T> key");
}
