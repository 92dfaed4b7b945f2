#include <stdexcept>
#include <string>

#include "support/definition_test.h"

namespace {

class SetCommand : public DefinitionTest {
 protected:
  // How running `body` on a cleared definition ends: "ok", "z. 2 @12: message"
  // for an Error at the token "12", or "what: text" for a standard exception.
  std::string outcome(std::string const& body) {
    fpl.clear(false);
    try {
      run(body);
    } catch (Error const& e) {
      if (!e.token) return "ohne Token: " + e.message;
      return "z. " + std::to_string(e.token->line()) + " @" + e.token->str() + ": " + e.message;
    } catch (std::exception const& e) {
      return std::string("what: ") + e.what();
    }
    return "ok";
  }
};

TEST_F(SetCommand, SetsTheCurrentSettings) {
  struct Case {
    char const* body;
    char const* gattung;
    char const* liniennummer;
    int lenkziffer;
  };
  Case const cases[] = {
      {"SET Gattung RE", "RE", "", -1},
      {"SET Gattung RE | IRE weiter", "RE|IRE", "", -1},
      {"SET Liniennummer 12a\nSET Gattung IC", "IC", "12a", -1},
      // An optional value is never taken from the next line.
      {"SET Liniennummer 7\nSET Liniennummer\nSET Gattung RE", "RE", "", -1},
      {"SET Gattung X\nSET Linie RB | Nahverkehr 4", "RB|Nahverkehr", "4", -1},
      {"SET Lenkziffer 300", "", "", 44},
      {"SET Lenkziffer 5x", "", "", 5},
      {"SET Lenkziffer 7\nSET Lenkziffer\nSET Gattung RE", "RE", "", -1},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.body);
    EXPECT_EQ(outcome(c.body), "ok");
    EXPECT_EQ(fpl.getGattungSetting(), c.gattung);
    EXPECT_EQ(fpl.getLiniennummerSetting(), c.liniennummer);
    EXPECT_EQ(fpl.getLenkzifferSetting(), c.lenkziffer);
  }
  EXPECT_EQ(outcome("SET Verspaetungsmodell \"Standard 2\"\nSET Lenkziffer 7"), "ok");
  EXPECT_EQ(fpl.getVerspaetungsmodellSetting(), "Standard 2");
  EXPECT_EQ(fpl.getLenkzifferSetting(), 7);
}

TEST_F(SetCommand, ReportsFaults) {
  std::pair<char const*, char const*> const cases[] = {
      {"SET Gattung RE | 12", "z. 2 @12: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"SET Linie 12 3", "z. 2 @12: Syntaxfehler: Keine Gattung angegeben."},
      {"SET Linie", "z. 2 @Linie: Syntaxfehler: Keine Gattung angegeben."},
      {"SET Linie RE | 4 5", "z. 2 @4: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"SET Linie RE | DB\n5", "z. 2 @DB: Syntaxfehler: Keine Liniennummer angegeben."},
      {"SET Gattungen RE", "z. 2 @SET: SET-Kommando mit unbekannter Statusvariable: Gattungen."},
      {"SET\nlenkziffer 1", "z. 2 @SET: SET-Kommando mit unbekannter Statusvariable: lenkziffer."},
      {"SET Reihung ~ Unbekannt", "what: invalid unordered_map<K, T> key"},
      {"SET Zuglauf Unbekannt", "what: invalid unordered_map<K, T> key"},
      {"SET Lenkziffer x1", "what: invalid stoi argument"},
      {"SET Lenkziffer 99999999999", "what: stoi argument out of range"},
  };
  for (auto const& [body, expected] : cases)
    EXPECT_EQ(outcome(body), expected) << body;
}

TEST_F(SetCommand, TakesFormationAndRunFromTheirTables) {
  run("ZL Leer { }\nRHG Kurz\nSET Reihung ~ Kurz\nSET Zuglauf Leer");
  EXPECT_EQ(fpl.getReihungSetting(), &fpl.getReihungen().front());
  EXPECT_TRUE(fpl.getReihungGedrehtSetting());
  EXPECT_EQ(fpl.getZuglaufSetting(), &fpl.getZL().front());

  EXPECT_EQ(
      outcome("ZL Leer { }\nRHG Kurz\nSET Reihung ~ Kurz\nSET Reihung Kurz\nSET Zuglauf ( Leer )"),
      "ok");
  EXPECT_FALSE(fpl.getReihungGedrehtSetting());
  ASSERT_NE(fpl.getZuglaufSetting(), nullptr);
  EXPECT_EQ(fpl.getZuglaufSetting()->name, "Leer");
}

}  // namespace
