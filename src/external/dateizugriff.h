#pragma once
// How the library touches the files a definition names: it reads only regular
// files, whole and bounded in size, and keeps them inside allowed folders when a
// front-end asks for it.
#include <cstddef>
#include <string>
#include <vector>

class Token;

namespace fplc::detail {

// Layout and library files larger than this are refused as unreadable: the
// simulator's own files stay far below.
inline constexpr std::size_t maxXmlBytes = std::size_t{256} << 20;

enum class Lesestatus { Gelesen, NichtGeoeffnet, ZuGross };

// Reads the regular file at `pfad` into `inhalt`. A FIFO, a device, a directory,
// a missing file or an I/O error give NichtGeoeffnet without blocking; a file of
// more than `grenze` bytes gives ZuGross. Never throws on I/O faults.
Lesestatus leseRegulaereDatei(std::string const& pfad, std::string& inhalt, std::size_t grenze);

// The fault of a definition file that goes past the limit on definition text.
std::string meldungZuVielText(std::string const& datei, std::size_t grenze);

// Whether a FIFO stands at `pfad`: opening it for writing would block until a
// reader comes.
bool istFifo(std::string const& pfad);

// The folder as the confinement compares it: absolute, with ".." and symbolic
// links resolved.
std::string aufgeloesterPfad(std::string const& pfad);

// Throws an Error at `token` when `verzeichnisse` is not empty and `pfad`, with
// ".." and symbolic links resolved, lies in none of them (each already resolved).
void pruefeErlaubt(Token const* token, std::string const& pfad,
                   std::vector<std::string> const& verzeichnisse);

}  // namespace fplc::detail
