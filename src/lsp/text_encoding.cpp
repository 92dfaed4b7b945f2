#include "lsp/text_encoding.h"

#include "tokenizer/cp1252.h"

namespace fplc::lsp {

namespace {

// The length of the UTF-8 sequence that starts with `lead` and its code point
// bits; 0 for a byte that starts no sequence.
int sequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if ((lead & 0xE0) == 0xC0) return 2;
  if ((lead & 0xF0) == 0xE0) return 3;
  if ((lead & 0xF8) == 0xF0) return 4;
  return 0;
}

// Decodes one sequence at `i`; returns its length and the code point, or
// length 0 when the bytes are no valid sequence.
int decode(std::string_view text, std::size_t i, char32_t& codePoint) {
  unsigned char lead = static_cast<unsigned char>(text[i]);
  int length = sequenceLength(lead);
  if (length == 0 || i + length > text.size()) return 0;
  static constexpr unsigned char kLeadMask[5] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  codePoint = lead & kLeadMask[length];
  for (int k = 1; k < length; ++k) {
    unsigned char c = static_cast<unsigned char>(text[i + k]);
    if ((c & 0xC0) != 0x80) return 0;
    codePoint = (codePoint << 6) | (c & 0x3F);
  }
  static constexpr char32_t kSmallest[5] = {0, 0, 0x80, 0x800, 0x10000};
  if (codePoint < kSmallest[length] || codePoint > 0x10FFFF) return 0;
  if (codePoint >= 0xD800 && codePoint <= 0xDFFF) return 0;
  return length;
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

bool isUtf8(std::string_view text) {
  char32_t ignored = 0;
  for (std::size_t i = 0; i < text.size();) {
    int length = decode(text, i, ignored);
    if (length == 0) return false;
    i += static_cast<std::size_t>(length);
  }
  return true;
}

std::string utf8ToCp1252(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    char32_t codePoint = 0;
    int length = decode(text, i, codePoint);
    if (length == 0) {  // not UTF-8 after all: the byte stays as it is
      out += text[i++];
      continue;
    }
    int byte = cp1252::byteOf(codePoint);
    out += byte < 0 ? '?' : static_cast<char>(byte);
    i += static_cast<std::size_t>(length);
  }
  return out;
}

std::string_view lineOf(std::string_view text, std::uint32_t line) {
  std::size_t start = 0;
  for (std::uint32_t n = 0; n < line; ++n) {
    std::size_t end = text.find_first_of("\r\n", start);
    if (end == std::string_view::npos) return {};
    start = end + ((text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n') ? 2 : 1);
  }
  std::size_t end = text.find_first_of("\r\n", start);
  return text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
}

std::uint32_t utf16Offset(std::string_view line, std::uint32_t bytes, Kodierung kodierung) {
  if (kodierung == Kodierung::Cp1252) return bytes;
  std::uint32_t units = 0;
  std::size_t i = 0;
  while (i < line.size() && i < bytes) {
    char32_t codePoint = 0;
    int length = decode(line, i, codePoint);
    if (length == 0) length = 1;  // a stray byte counts as one unit
    units += codePoint > 0xFFFF ? 2 : 1;
    i += static_cast<std::size_t>(length);
  }
  // Past the end of the line every byte counts as one unit.
  return units + (bytes > i ? bytes - static_cast<std::uint32_t>(i) : 0);
}

std::uint32_t byteOffset(std::string_view line, std::uint32_t units, Kodierung kodierung) {
  if (kodierung == Kodierung::Cp1252) return units;
  std::uint32_t counted = 0;
  std::size_t i = 0;
  while (i < line.size() && counted < units) {
    char32_t codePoint = 0;
    int length = decode(line, i, codePoint);
    if (length == 0) length = 1, codePoint = 0;
    counted += codePoint > 0xFFFF ? 2 : 1;
    i += static_cast<std::size_t>(length);
  }
  return static_cast<std::uint32_t>(i) + (units > counted ? units - counted : 0);
}

std::string pathOfUri(std::string_view uri) {
  constexpr std::string_view kScheme = "file://";
  if (uri.substr(0, kScheme.size()) != kScheme) return {};
  std::string_view rest = uri.substr(kScheme.size());
  // "file://host/path": only the local host (empty or "localhost") is ours.
  std::size_t slash = rest.find('/');
  if (slash == std::string_view::npos) return {};
  rest = rest.substr(slash);
  std::string path;
  for (std::size_t i = 0; i < rest.size(); ++i) {
    if (rest[i] == '%' && i + 2 < rest.size() && hexValue(rest[i + 1]) >= 0 &&
        hexValue(rest[i + 2]) >= 0) {
      path += static_cast<char>(hexValue(rest[i + 1]) * 16 + hexValue(rest[i + 2]));
      i += 2;
    } else {
      path += rest[i];
    }
  }
  return path;
}

std::string uriOfPath(std::string_view path) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string uri = "file://";
  for (char c : path) {
    unsigned char u = static_cast<unsigned char>(c);
    bool plain = (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') ||
                 c == '/' || c == '-' || c == '.' || c == '_' || c == '~';
    if (plain) {
      uri += c;
    } else {
      uri += '%';
      uri += kHex[u >> 4];
      uri += kHex[u & 15];
    }
  }
  return uri;
}

}  // namespace fplc::lsp
