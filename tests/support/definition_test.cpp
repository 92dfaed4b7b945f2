#include "support/definition_test.h"

#include <sstream>

void DefinitionTest::run(std::string const& body, bool skipOutput) {
  std::istringstream in(kHeader + body);
  fpl.read(in, "test.fpl");
  fpl.execute(skipOutput, static_cast<TokenList const*>(nullptr));
}

Error DefinitionTest::runExpectingError(std::string const& body, bool skipOutput) {
  try {
    run(body, skipOutput);
  } catch (Error const& e) {
    return e;
  }
  ADD_FAILURE() << "no Error thrown for:\n" << body;
  return Error(nullptr, "");
}

std::string DefinitionTest::describe(Error const& e) {
  std::string where = e.token ? "z. " + std::to_string(e.token->line()) : "ohne Token";
  return where + ": " + e.message;
}

std::string DefinitionTest::fault(Error const& e) {
  if (!e.token) return "ohne Token: " + e.message;
  return "z. " + std::to_string(e.token->line()) + " " + e.token->str() + ": " + e.message;
}
