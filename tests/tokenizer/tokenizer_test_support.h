#pragma once
// Helpers for tests that read texts into token lists and check what an action throws.
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

#include "tokenizer/error.h"
#include "tokenizer/token_list.h"

inline void readInto(TokenList& list, std::string const& text, bool prepare = false) {
  std::istringstream in(text);
  list.read(in, "test.txt");
  if (prepare) list.prepare();
}

// The exception of type E (an Error unless named) that `action` throws. When it
// throws none, a runtime_error leaves the test and fails it.
template <typename E = Error, typename Action>
E errorOf(Action action) {
  try {
    action();
  } catch (E const& e) {
    return e;
  }
  throw std::runtime_error("nothing thrown");
}
