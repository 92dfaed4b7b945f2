#include "tokenizer/cp1252.h"

namespace fplc::cp1252 {
namespace {

// Length of the valid UTF-8 multi-byte sequence at `pos`, or 0 when there is none.
std::size_t utf8SequenceLength(std::string_view text, std::size_t pos) {
  unsigned char lead = static_cast<unsigned char>(text[pos]);
  std::size_t length = 0;
  char32_t cp = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2, cp = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3, cp = lead & 0x0F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4, cp = lead & 0x07;
  } else {
    return 0;
  }
  if (pos + length > text.size()) return 0;
  for (std::size_t k = 1; k < length; ++k) {
    unsigned char c = static_cast<unsigned char>(text[pos + k]);
    if ((c & 0xC0) != 0x80) return 0;
    cp = (cp << 6) | (c & 0x3F);
  }
  // Reject overlong forms, surrogates and values beyond Unicode.
  if ((length == 3 && cp < 0x800) || (length == 4 && cp < 0x10000) ||
      (cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF)
    return 0;
  return length;
}

void appendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

}  // namespace

std::string toUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 8);
  for (std::size_t pos = 0; pos < text.size();) {
    if (std::size_t length = utf8SequenceLength(text, pos)) {
      out.append(text.substr(pos, length));
      pos += length;
    } else {
      appendUtf8(out, codePointOf(static_cast<unsigned char>(text[pos])));
      ++pos;
    }
  }
  return out;
}

}  // namespace fplc::cp1252
