#pragma once
// Texts between the editor and the library: the editor speaks UTF-8 and counts
// columns in UTF-16 code units, the library reads bytes and counts columns in
// bytes from 1.
#include <cstdint>
#include <string>
#include <string_view>

namespace fplc::lsp {

// Whether `text` is valid UTF-8 (plain ASCII is).
bool isUtf8(std::string_view text);

// The editor's UTF-8 text in Windows-1252 bytes; a character the code page lacks
// becomes "?".
std::string utf8ToCp1252(std::string_view text);

// Line `line` (from 0) of `text`, without its line end; empty past the end.
std::string_view lineOf(std::string_view text, std::uint32_t line);

// How a file's bytes were handed to the library: as Windows-1252 (one byte, one
// character) or as UTF-8 (as written on disk).
enum class Kodierung { Cp1252, Utf8 };

// The UTF-16 offset of the byte offset `bytes` in a line of that encoding.
std::uint32_t utf16Offset(std::string_view line, std::uint32_t bytes, Kodierung kodierung);
// The byte offset of the UTF-16 offset `units` in a line of that encoding.
std::uint32_t byteOffset(std::string_view line, std::uint32_t units, Kodierung kodierung);

// "file:///a%20b/c.fpl" <-> "/a b/c.fpl"; a URI of another scheme gives "".
std::string pathOfUri(std::string_view uri);
std::string uriOfPath(std::string_view path);

}  // namespace fplc::lsp
