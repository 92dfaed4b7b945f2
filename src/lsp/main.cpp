// fplc-lsp: the language server for timetable definitions, on standard input
// and output.
#include <csignal>
#include <iostream>

#include "lsp/framing.h"
#include "lsp/server.h"

int main() {
  // An editor that goes away must not kill the server while it writes.
  std::signal(SIGPIPE, SIG_IGN);
  std::ios::sync_with_stdio(false);
  fplc::lsp::Eingabe eingabe(0);
  return fplc::lsp::bediene(eingabe, std::cout);
}
