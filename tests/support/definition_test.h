#pragma once
// Runs definition texts in tests. The header line "Quorvel FplDef 1" is added in
// front, so the first line of `body` is line 2 of the file.
#include <gtest/gtest.h>

#include <string>

#include "model/fahrplandefinition.h"

class DefinitionTest : public ::testing::Test {
 protected:
  Fahrplandefinition fpl;

  // Reads and executes `body` (OUT is skipped unless `skipOutput` is false).
  void run(std::string const& body, bool skipOutput = true);
  // Runs `body` and returns the Error it throws; the test fails when none is thrown.
  Error runExpectingError(std::string const& body, bool skipOutput = true);
  // The text and line of a fault, for compact assertions: "z. 3: message".
  static std::string describe(Error const& e);
  // The fault with its line and token text: "z. 3 XA: message".
  static std::string fault(Error const& e);

  // Clears the definition, runs `body` and returns what `ergebnis()` says of the
  // state it leaves, or the fault it throws as `fault` writes it. Lets one table
  // hold cases that succeed and cases that fail.
  template <typename Ergebnis>
  std::string outcome(std::string const& body, Ergebnis ergebnis) {
    fpl.clear(false);
    try {
      run(body);
    } catch (Error const& e) {
      return fault(e);
    }
    return ergebnis();
  }
};

// The header line every test definition starts with.
inline constexpr char const* kHeader = "Quorvel FplDef 1\n";
