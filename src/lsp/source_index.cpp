#include "lsp/source_index.h"

#include "lsp/analysis.h"

namespace fplc::lsp {

namespace {

bool istOeffnend(Token const* t) {
  return t->link() && (t->str() == "{" || t->str() == "(" || t->str() == "[");
}

// The last token of the command that starts at `wort`, given the next command.
Token const* endeVon(Token const* wort, Token const* naechster) {
  Token const* ende = wort;
  for (Token const* t = wort->next(); t && t != naechster; t = t->next())
    ende = t;
  return ende;
}

std::string segmentName(Token const* wort) {
  Token const* start = wort->next();
  if (!start || !start->next()) return {};
  Token const* ziel = start->next();
  if (ziel->isNumber() && ziel->next()) {
    return start->str() + "-" + ziel->str() + "-" + ziel->next()->str();
  }
  return start->str() + "-" + ziel->str();
}

}  // namespace

std::vector<Befehl> befehleVon(TokenList const& list) {
  std::vector<Befehl> befehle;
  Token const* t = list.front();
  for (int i = 0; i < 3 && t; ++i)
    t = t->next();  // the header
  std::uint32_t lastLine = 0;
  while (t) {
    if (istOeffnend(t)) {
      t = t->link()->next();
      continue;
    }
    if (t->line() != lastLine) {
      befehle.push_back({t, nullptr});
      lastLine = t->line();
    }
    t = t->next();
  }
  for (std::size_t i = 0; i < befehle.size(); ++i) {
    Token const* naechster = i + 1 < befehle.size() ? befehle[i + 1].wort : nullptr;
    befehle[i].ende = endeVon(befehle[i].wort, naechster);
  }
  return befehle;
}

std::vector<Definition> definitionenVon(Fahrplandefinition const& fpl) {
  static constexpr char const* kDefinierend[] = {"ZL", "ZLS", "VT", "RHG", "FZG", "BTR", "AA"};
  std::vector<Definition> out;
  for (auto const& list : fpl.getTokenLists()) {
    for (Befehl const& b : befehleVon(*list)) {
      Token const* name = b.wort->next();
      if (!name || name->line() != b.wort->line()) continue;
      for (char const* art : kDefinierend) {
        if (b.wort->str() != art) continue;
        std::string text = b.wort->str() == "ZLS" ? segmentName(b.wort) : name->str();
        out.push_back({art, text, b.wort, name});
      }
    }
  }
  return out;
}

TokenList const* listeVon(Fahrplandefinition const& fpl, std::string const& pfad) {
  std::string gesucht = normalisiert(pfad);
  for (auto const& list : fpl.getTokenLists())
    if (normalisiert(list->file()) == gesucht) return list.get();
  return nullptr;
}

Token const* tokenAn(TokenList const& list, std::uint32_t zeile, std::uint32_t spalte) {
  for (Token const* t = list.front(); t; t = t->next()) {
    if (t->line() > zeile) break;
    if (t->line() != zeile || t->column() == 0) continue;
    std::uint32_t laenge = static_cast<std::uint32_t>(t->str().size());
    if (t->getType() == Token::HardcodedName) laenge += 2;  // the quotes
    if (spalte >= t->column() && spalte - t->column() < std::max<std::uint32_t>(laenge, 1))
      return t;
  }
  return nullptr;
}

Befehl befehlVon(TokenList const& list, Token const* token) {
  Befehl gefunden;
  for (Befehl const& b : befehleVon(list)) {
    for (Token const* t = b.wort; t; t = t->next()) {
      if (t == token) return b;
      if (t == b.ende) break;
    }
  }
  return gefunden;
}

Stelle stelleAn(Fahrplandefinition const& fpl, std::string const& pfad, std::uint32_t zeile,
                std::uint32_t spalte) {
  TokenList const* list = listeVon(fpl, pfad);
  if (!list) return {};
  Token const* token = tokenAn(*list, zeile, spalte);
  if (!token) return {};
  return {token, befehlVon(*list, token)};
}

}  // namespace fplc::lsp
