#pragma once
// German message texts are written in UTF-8 in the sources and reach users as
// Windows-1252 bytes. The conversion runs at compile time: `"schließen"_cp1252`
// yields a pointer to static Windows-1252 bytes, and a character the code page
// lacks stops the build.
#include <cstddef>
#include <string>
#include <string_view>

namespace fplc::cp1252 {

template <std::size_t N>
struct Bytes {
  char data[N]{};
  std::size_t size = 0;
};

// Windows-1252 bytes 0x80..0x9F and their code points; 0 marks the five unused bytes.
inline constexpr char32_t kHighControlRange[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The Windows-1252 byte of a code point, or -1 when the code page lacks it.
constexpr int byteOf(char32_t codePoint) {
  if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) return int(codePoint);
  for (int i = 0; i < 32; ++i)
    if (kHighControlRange[i] != 0 && kHighControlRange[i] == codePoint) return 0x80 + i;
  return -1;
}

// The code point of a Windows-1252 byte; unused bytes map to themselves.
constexpr char32_t codePointOf(unsigned char byte) {
  if (byte >= 0x80 && byte <= 0x9F && kHighControlRange[byte - 0x80] != 0)
    return kHighControlRange[byte - 0x80];
  return byte;
}

void characterMissingFromCodePage();  // not constexpr: calling it stops compilation

// The characters arrive as a template argument pack: a literal operator template
// taking a class-type argument crashes Clang 14 inside some full-expressions.
template <char... Chars>
consteval auto convert() {
  constexpr std::size_t n = sizeof...(Chars) + 1;
  constexpr char text[n] = {Chars..., '\0'};
  Bytes<n> out{};
  std::size_t i = 0;
  while (i + 1 < n) {
    unsigned char c = static_cast<unsigned char>(text[i]);
    char32_t cp = 0;
    int extra = 0;
    if (c < 0x80) {
      cp = c;
    } else if ((c & 0xE0) == 0xC0) {
      cp = c & 0x1F, extra = 1;
    } else if ((c & 0xF0) == 0xE0) {
      cp = c & 0x0F, extra = 2;
    } else if ((c & 0xF8) == 0xF0) {
      cp = c & 0x07, extra = 3;
    } else {
      characterMissingFromCodePage();
    }
    for (int k = 1; k <= extra; ++k) {
      if (i + k + 1 >= n) characterMissingFromCodePage();
      cp = (cp << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
    }
    int byte = byteOf(cp);
    if (byte < 0) characterMissingFromCodePage();
    out.data[out.size++] = static_cast<char>(byte);
    i += 1 + extra;
  }
  out.data[out.size] = '\0';
  return out;
}

template <char... Chars>
inline constexpr auto kConverted = convert<Chars...>();

// Display: bytes that already form a valid multi-byte UTF-8 sequence stay as they
// are (definitions written on Linux are often UTF-8); every other byte is read as
// Windows-1252.
std::string toUtf8(std::string_view text);

}  // namespace fplc::cp1252

namespace cp1252 = fplc::cp1252;

// `"Zu viele schließende Klammern."_cp1252` is the message in Windows-1252 bytes.
// The character-pack form of a literal operator template is a GNU extension that
// GCC and Clang both provide.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wgnu-string-literal-operator-template"
#endif
template <typename Char, Char... Chars>
consteval char const* operator""_cp1252() {
  static_assert(sizeof(Char) == 1, "Windows-1252 literals are written as plain narrow strings");
  return cp1252::kConverted<static_cast<char>(Chars)...>.data;
}
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
