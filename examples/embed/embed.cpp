// The smallest program that compiles a timetable definition through the fplc
// library, as an editor or another tool embeds it:
//
//   embed DEFINITION
//
// It writes the timetable files that the definition's OUT commands ask for,
// prints them, the warnings and the fault, and exits with 1 on a fault.
#include <fplc/fplc.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <string>

namespace {

// The library's texts are Windows-1252; the terminal wants UTF-8.
std::string toUtf8(std::string const& text) {
  // Code points of the bytes 0x80..0x9F; the unused ones stay as they are.
  static char32_t const high[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                    0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
  std::string out;
  for (unsigned char byte : text) {
    char32_t c = byte >= 0x80 && byte <= 0x9F ? high[byte - 0x80] : byte;
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

// "DEFINITION, z. 12: " before a message; faults without a token have no place.
std::string placeOf(Fahrplandefinition const& definition, Token const* token) {
  return token ? toUtf8(definition.createTokenLocationString(token)) + ": " : "";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: embed DEFINITION\n";
    return 2;
  }
  std::string const path = argv[1];
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::cerr << "embed: " << path << " cannot be read\n";
    return 2;
  }

  quorvel_init(path);  // finds the installation root above the definition
  Fahrplandefinition definition;
  std::string fault;
  try {
    definition.read(in, path);
    definition.execute(false, nullptr);
    definition.validate();
  } catch (Error const& e) {
    fault = placeOf(definition, e.token) + toUtf8(e.message);
  } catch (std::exception const& e) {  // unknown names, numbers out of range
    fault = placeOf(definition, definition.getCurrentCommand()) + e.what();
  }

  for (Error const& warning : definition.getWarnungen())
    std::cerr << "Warnung: " << placeOf(definition, warning.token) << toUtf8(warning.message)
              << '\n';
  for (auto const& ausgabe : definition.getAusgaben())
    std::cout << (ausgabe.geschrieben ? "" : "nicht geschrieben: ") << toUtf8(ausgabe.pfad) << '\n';
  if (!fault.empty()) {
    std::cerr << "Fehler: " << fault << '\n';
    return 1;
  }
  return 0;
}
