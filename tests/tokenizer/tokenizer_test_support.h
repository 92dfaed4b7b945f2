#pragma once
// Helpers for tests that read texts into token lists and check what an action throws.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tokenizer/error.h"
#include "tokenizer/token_list.h"

inline void readInto(TokenList& list, std::string const& text, bool prepare = false) {
  std::istringstream in(text);
  list.read(in, "test.txt");
  if (prepare) list.prepare();
}

// The Error that `action` throws; the test fails when it throws none.
template <typename Action>
Error errorOf(Action action) {
  try {
    action();
  } catch (Error const& e) {
    return e;
  }
  ADD_FAILURE() << "no Error thrown";
  return Error(nullptr, "");
}

// The what() text of the standard exception E that `action` throws; empty when
// it throws none (an exception of another type fails the test).
template <typename E, typename Action>
std::string whatOf(Action action) {
  try {
    action();
  } catch (E const& e) {
    return e.what();
  }
  return "";
}
