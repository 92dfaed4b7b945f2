#include "lsp/navigation.h"

#include <fstream>

#include "lsp/diagnostics.h"
#include "lsp/source_index.h"
#include "tokenizer/cp1252.h"

namespace fplc::lsp {

namespace {

nlohmann::json rangeOf(Analyse const& analyse, Token const* von, Token const* bis) {
  std::string const& datei = von->getTokenList()->file();
  std::uint32_t endeSpalte = bis->column() + static_cast<std::uint32_t>(bis->str().size()) +
                             (bis->getType() == Token::HardcodedName ? 2 : 0);
  return {{"start", position(analyse, datei, von->line(), von->column())},
          {"end", position(analyse, datei, bis->line(), endeSpalte)}};
}

nlohmann::json locationOf(Analyse const& analyse, Token const* von, Token const* bis) {
  return {{"uri", uriOfPath(normalisiert(von->getTokenList()->file()))},
          {"range", rangeOf(analyse, von, bis)}};
}

// Which kinds of definition a name on a line of command `wort` may refer to, most
// likely first.
std::vector<std::string> artenFuer(Token const* wort, Token const* token) {
  Token const* vorher = token->prev();
  if (vorher && vorher->str() == "~") vorher = vorher->prev();
  if (vorher && vorher->str() == "Reihung") return {"RHG"};
  if (vorher && vorher->str() == "Zuglauf") return {"ZL"};
  if (wort->str() == "RHG") return {"FZG", "RHG"};
  return {"ZL", "VT", "RHG", "BTR", "FZG", "AA"};
}

// The number of "$ VzG 12" on a run's line selects the segments of route-book
// number 12: the first ZLS with that number.
Definition const* segmentFuer(std::vector<Definition> const& definitionen, Token const* token) {
  if (!token->isNumber() || !token->prev() || token->prev()->str() != "VzG") return nullptr;
  for (Definition const& d : definitionen) {
    if (d.art != "ZLS") continue;
    Token const* nummer = d.nameToken->next();
    if (nummer && nummer->isNumber() && nummer->str() == token->str()) return &d;
  }
  return nullptr;
}

// The line of the layout file that names the operating point, from 1; 1 when
// the file does not name it literally.
std::uint32_t zeileIn(std::string const& datei, std::string const& name) {
  std::ifstream in(datei, std::ios::binary);
  std::string line;
  for (std::uint32_t n = 1; std::getline(in, line); ++n)
    if (line.find("\"" + name + "\"") != std::string::npos) return n;
  return 1;
}

// An operating point that only a layout file defines: that file.
nlohmann::json layoutStelle(Fahrplandefinition const& fpl, std::string const& ds100) {
  auto found = fpl.getBTR().find(ds100);
  if (found == fpl.getBTR().end() || !found->second) return nullptr;
  std::string const& name = found->second->name;
  for (Aussenanlage const& aa : fpl.getAussenanlagen()) {
    if (!aa.betriebsstellen.count(name) && !aa.betriebsstellen.count(ds100)) continue;
    std::uint32_t line = zeileIn(aa.datei, name) - 1;
    nlohmann::json pos = {{"line", line}, {"character", 0}};
    return {{"uri", uriOfPath(normalisiert(aa.datei))}, {"range", {{"start", pos}, {"end", pos}}}};
  }
  return nullptr;
}

int symbolKind(std::string const& art) {
  if (art == "AA") return 2;    // Module
  if (art == "BTR") return 14;  // Constant
  if (art == "FZG") return 19;  // Object
  if (art == "RHG") return 23;  // Struct
  if (art == "VT") return 10;   // Enum
  if (art == "ZL") return 12;   // Function
  if (art == "ZLS") return 6;   // Method
  return 24;                    // Event: a train
}

// "Z 60001", "TZ 3001 3031": a train command names itself by its first and last
// train number.
std::string zugName(Token const* wort) {
  std::string name = wort->str();
  int anzahl = wort->str() == "TZ" ? 2 : 1;
  for (Token const* t = wort->next(); t && t->line() == wort->line() && anzahl > 0;
       t = t->next(), --anzahl) {
    if (!t->isNumber()) break;
    name += " " + t->str();
  }
  return name;
}

}  // namespace

nlohmann::json definitionAn(Analyse const& analyse, std::string const& pfad, std::uint32_t zeile,
                            std::uint32_t spalte) {
  Fahrplandefinition const& fpl = *analyse.fpl;
  auto const [token, befehl] = stelleAn(fpl, pfad, zeile, spalte);
  if (!befehl.wort || token == befehl.wort) return nullptr;

  std::vector<Definition> definitionen = definitionenVon(fpl);
  if (Definition const* segment = segmentFuer(definitionen, token))
    return locationOf(analyse, segment->wort, segment->nameToken);
  for (std::string const& art : artenFuer(befehl.wort, token)) {
    for (Definition const& d : definitionen)
      if (d.art == art && d.name == token->str()) return locationOf(analyse, d.wort, d.nameToken);
  }
  return layoutStelle(fpl, token->str());
}

nlohmann::json symboleVon(Analyse const& analyse, std::string const& pfad) {
  nlohmann::json out = nlohmann::json::array();
  TokenList const* list = listeVon(*analyse.fpl, pfad);
  if (!list) return out;
  static constexpr char const* kArten[] = {"AA", "BTR", "FZG", "RHG", "VT", "ZL", "ZLS", "Z", "TZ"};
  for (Befehl const& b : befehleVon(*list)) {
    Token const* name = b.wort->next();
    if (!name || name->line() != b.wort->line()) continue;
    for (char const* art : kArten) {
      if (b.wort->str() != art) continue;
      bool zug = b.wort->str() == "Z" || b.wort->str() == "TZ";
      std::string text = zug ? zugName(b.wort) : art + std::string(" ") + name->str();
      out.push_back({{"name", cp1252::toUtf8(text)},
                     {"kind", symbolKind(art)},
                     {"range", rangeOf(analyse, b.wort, b.ende)},
                     {"selectionRange", rangeOf(analyse, zug ? b.wort : name, name)}});
    }
  }
  return out;
}

}  // namespace fplc::lsp
