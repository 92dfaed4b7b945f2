#pragma once
// A fault or a warning of a timetable definition: a message and the token it
// concerns. Fatal faults are thrown by value; warnings are collected in order.
#include <string>

#include "../export.h"

class Token;

struct FPLC_API Error {
  std::string message;  // complete German text, Windows-1252
  Token const* token;   // not owned; valid while the definition keeps its token lists

  Error(Token const* token, std::string const& message) : message(message), token(token) {}
  Error(Token const* token, char const* message) : message(message), token(token) {}
};
