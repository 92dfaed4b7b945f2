#pragma once
#include <gtest/gtest.h>

#include <sstream>

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
