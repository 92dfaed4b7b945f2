#pragma once
// One compile of an editor document, kept for the questions the editor asks
// afterwards (definition, hover, outline, completion) until the next compile.
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/compile.h"
#include "lsp/text_encoding.h"
#include "model/fahrplandefinition.h"

namespace fplc::lsp {

// A document the editor has open: its UTF-8 text as the editor sends it.
struct Dokument {
  std::string uri;
  std::string pfad;  // absolute and normalised
  std::string text;
  Kodierung kodierung = Kodierung::Utf8;  // how its bytes go to the library
};

// Open documents by normalised path.
using Dokumente = std::map<std::string, Dokument>;

// What the client set about the installation.
struct Einstellungen {
  std::optional<std::string> installationRoot;
};

struct Analyse {
  std::string pfad;  // the compiled document
  std::unique_ptr<Fahrplandefinition> fpl;
  Ergebnis ergebnis;
  // A file as the library read it, with where its lines start.
  struct Quelltext {
    std::string bytes;
    Kodierung kodierung = Kodierung::Utf8;
    std::vector<std::size_t> zeilenAnfaenge;
  };
  // The texts handed to the library for open documents, by the file name the
  // library's token list carries; other files are read from disk when first
  // asked for.
  std::map<std::string, Quelltext> texte;

  // Line `zeile` (from 1) of `datei` as the library read it, and its encoding.
  std::pair<std::string_view, Kodierung> zeile(std::string const& datei, std::uint32_t zeile) const;

 private:
  mutable std::map<std::string, Quelltext> vonPlatte_;
};

// `bytes` with the start of every line, a line ending at LF, CR or CR LF as the
// library counts them.
Analyse::Quelltext quelltext(std::string bytes, Kodierung kodierung);

// An absolute, lexically normal path, as the documents are keyed.
std::string normalisiert(std::string const& pfad);

// How the editor's text of a file at `pfad` goes to the library: as Windows-1252
// when the saved file is not UTF-8 (the definition language's own encoding), else
// as UTF-8, the bytes fplc would read.
Kodierung kodierungVon(std::string const& pfad);

// Compiles `dokument` in check mode, as `fplc --check` does; included files come
// from `offen` when the editor has them open. Never throws.
std::unique_ptr<Analyse> analysiere(Dokument const& dokument, Dokumente const& offen,
                                    Einstellungen const& einstellungen);

}  // namespace fplc::lsp
