#pragma once
// The commands of a compiled definition as they stand in its files: which token
// starts which command, which command defines which name. Built from the token
// lists, so it also covers a definition whose compile stopped at a fault.
#include <cstdint>
#include <string>
#include <vector>

#include "model/fahrplandefinition.h"

namespace fplc::lsp {

// One command: its keyword token, and the token that closes it (the end of its
// data block, or its last token on the keyword's line).
struct Befehl {
  Token const* wort = nullptr;
  Token const* ende = nullptr;
};

// The commands of one token list, in order, found as the interpreter finds them.
std::vector<Befehl> befehleVon(TokenList const& list);

// A name a command defines: runs (ZL), segments (ZLS, "start-ziel"), days (VT),
// formations (RHG), vehicles (FZG), operating points (BTR), layouts (AA).
struct Definition {
  std::string art;   // the keyword
  std::string name;  // as the library compares it
  Token const* wort = nullptr;
  Token const* nameToken = nullptr;
};

// Every definition in every file of `fpl`, in reading order.
std::vector<Definition> definitionenVon(Fahrplandefinition const& fpl);

// The token list read from `pfad` (compared normalised), or null.
TokenList const* listeVon(Fahrplandefinition const& fpl, std::string const& pfad);

// The token at line `zeile` and byte column `spalte` (both from 1), or null.
Token const* tokenAn(TokenList const& list, std::uint32_t zeile, std::uint32_t spalte);

// The command that `token` belongs to, or an empty Befehl.
Befehl befehlVon(TokenList const& list, Token const* token);

// The token at a place in the file `pfad` and its command; the command is
// empty where the file, the token or a command there is missing.
struct Stelle {
  Token const* token = nullptr;
  Befehl befehl;
};
Stelle stelleAn(Fahrplandefinition const& fpl, std::string const& pfad, std::uint32_t zeile,
                std::uint32_t spalte);

}  // namespace fplc::lsp
