#include "lsp/completion.h"

#include <set>
#include <sstream>
#include <vector>

#include "lsp/source_index.h"
#include "tokenizer/cp1252.h"

namespace fplc::lsp {

namespace {

constexpr int kKeyword = 14;
constexpr int kProperty = 10;
constexpr int kFunction = 3;
constexpr int kEnum = 13;
constexpr int kStruct = 22;
constexpr int kConstant = 21;
constexpr int kClass = 7;

constexpr char const* kBefehle[] = {"AUT", "BTR", "AA", "LZ", "BIB", "FZG", "RHG", "VT", "ZL",
                                    "ZLS", "SET", "TZ", "Z",  "M",   "DAT", "BIF", "OUT"};
constexpr char const* kModifikatoren[] = {"WENDE", "GATTUNG", "LINIE", "FOLGE ZN", "LZ"};
constexpr char const* kEinstellungen[] = {
    "Gattung", "Liniennummer", "Linie", "Lenkziffer", "Reihung", "Zuglauf", "Verspaetungsmodell"};

std::vector<std::string> woerter(std::string const& text) {
  std::istringstream in(text);
  std::vector<std::string> out;
  for (std::string w; in >> w;)
    out.push_back(w);
  return out;
}

// Whether the text before the cursor is still the line's first word.
bool amZeilenanfang(std::string const& vorCursor) {
  std::vector<std::string> w = woerter(vorCursor);
  bool endsInSpace = !vorCursor.empty() && (vorCursor.back() == ' ' || vorCursor.back() == '\t');
  return w.empty() || (w.size() == 1 && !endsInSpace);
}

// The keyword of the data block that line `zeile` (from 1) lies inside, or "".
std::string blockBefehl(TokenList const& list, std::uint32_t zeile) {
  for (Befehl const& b : befehleVon(list)) {
    for (Token const* t = b.wort; t; t = t->next()) {
      if (t->str() == "{" && t->line() < zeile && (!t->link() || t->link()->line() >= zeile))
        return b.wort->str();
      if (t == b.ende) break;
    }
  }
  return {};
}

struct Sammlung {
  nlohmann::json items = nlohmann::json::array();
  std::set<std::string> gesehen;

  void add(std::string const& label, int kind, std::string const& detail = {}) {
    std::string text = cp1252::toUtf8(label);
    if (text.empty() || !gesehen.insert(text).second) return;
    nlohmann::json item = {{"label", text}, {"kind", kind}};
    if (!detail.empty()) item["detail"] = detail;
    items.push_back(item);
  }
};

int kindOf(std::string const& art) {
  if (art == "ZL") return kFunction;
  if (art == "VT") return kEnum;
  if (art == "RHG") return kStruct;
  if (art == "FZG") return kClass;
  return kConstant;
}

// The names of `arten` defined before line `zeile` of the document, or anywhere in
// other files; operating points of loaded layouts with "BTR".
void namen(Sammlung& s, Analyse const& analyse, Dokument const& dokument, std::uint32_t zeile,
           std::vector<std::string> const& arten) {
  for (Definition const& d : definitionenVon(*analyse.fpl)) {
    bool hier = normalisiert(d.wort->getTokenList()->file()) == dokument.pfad;
    if (hier && d.wort->line() >= zeile) continue;
    for (std::string const& art : arten)
      if (d.art == art && d.name != "*") s.add(d.name, kindOf(art), art);
  }
  for (std::string const& art : arten) {
    if (art != "BTR") continue;
    for (auto const& [ds100, stelle] : analyse.fpl->getBTR())
      s.add(ds100, kConstant, "BTR");
  }
}

}  // namespace

nlohmann::json vervollstaendige(Analyse const& analyse, Dokument const& dokument,
                                std::uint32_t zeile, std::string const& vorCursor) {
  Sammlung s;
  TokenList const* list = listeVon(*analyse.fpl, dokument.pfad);
  std::string block = list ? blockBefehl(*list, zeile + 1) : std::string();
  std::vector<std::string> w = woerter(vorCursor);
  bool neuesWort = vorCursor.empty() || vorCursor.back() == ' ' || vorCursor.back() == '\t';
  // The words before the one being typed.
  std::size_t fertig = neuesWort ? w.size() : (w.empty() ? 0 : w.size() - 1);
  std::string vorher = fertig > 0 ? w[fertig - 1] : std::string();

  if (block.empty() && amZeilenanfang(vorCursor)) {
    for (char const* b : kBefehle)
      s.add(b, kKeyword);
  } else if (block == "ZL" || block == "Z") {
    bool haltezeile = fertig >= 1 && w[0] != "<-" && w[0] != "->";
    if (fertig == 0) namen(s, analyse, dokument, zeile + 1, {"BTR"});
    if (haltezeile && fertig >= 5)
      for (char const* m : kModifikatoren)
        s.add(m, kProperty);
  } else if (!block.empty()) {
    namen(s, analyse, dokument, zeile + 1, {"BTR"});
  } else if (w[0] == "SET" && fertig == 1) {
    for (char const* e : kEinstellungen)
      s.add(e, kProperty);
  } else if (vorher == "Reihung" || vorher == "~") {
    namen(s, analyse, dokument, zeile + 1, {"RHG"});
  } else if (vorher == "Zuglauf") {
    namen(s, analyse, dokument, zeile + 1, {"ZL"});
  } else if (w[0] == "RHG") {
    namen(s, analyse, dokument, zeile + 1, {"FZG"});
  } else {
    if (w[0] == "M")
      for (char const* m : kModifikatoren)
        s.add(m, kProperty);
    namen(s, analyse, dokument, zeile + 1, {"ZL", "VT", "RHG", "BTR"});
  }
  return {{"isIncomplete", false}, {"items", s.items}};
}

}  // namespace fplc::lsp
