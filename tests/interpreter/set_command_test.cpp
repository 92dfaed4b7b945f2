#include <stdexcept>
#include <string>

#include "support/definition_test.h"

namespace {

class SetCommand : public DefinitionTest {
 protected:
  // The settings after `body` as "Gattung|Linie|Lenkziffer|Modell|Reihung|Zuglauf", or the
  // fault: "z. 2: message @12" for an Error at the token "12", "z. 3 what: text" for a
  // standard exception escaping the command on line 3.
  std::string outcome(std::string const& body) {
    fpl.clear(false);
    try {
      run(body);
    } catch (Error const& e) {
      return describe(e) + (e.token ? " @" + e.token->str() : "");
    } catch (std::exception const& e) {
      return "z. " + std::to_string(fpl.getCurrentCommand()->line()) + " what: " + e.what();
    }
    EXPECT_EQ(fpl.getCurrentCommand(), nullptr);
    Reihung const* r = fpl.getReihungSetting();
    return fpl.getGattungSetting() + "|" + fpl.getLiniennummerSetting() + "|" +
           std::to_string(fpl.getLenkzifferSetting()) + "|" + fpl.getVerspaetungsmodellSetting() +
           "|" + (fpl.getReihungGedrehtSetting() ? "~" : "") + (r ? r->name : "") + "|" +
           (fpl.getZuglaufSetting() ? fpl.getZuglaufSetting()->name : "");
  }
};

TEST_F(SetCommand, SetsTheCurrentSettingsOrReportsTheFault) {
  std::string const betrieblich = "Syntaxfehler: Keine betriebliche Gattung angegeben.";
  std::string const gattung = "Syntaxfehler: Keine Gattung angegeben.";
  std::string const unbekannt = "SET-Kommando mit unbekannter Statusvariable: ";
  std::string const tabellen = "ZL Leer { }\nRHG Kurz\nSET Reihung ~ Kurz\n";
  std::pair<std::string, std::string> const cases[] = {
      {"SET Gattung RE", "RE||-1|||"},
      {"SET Gattung RE | IRE weiter", "RE|IRE||-1|||"},
      {"SET Liniennummer 12a\nSET Gattung IC", "IC|12a|-1|||"},
      // An optional value is never taken from the next line.
      {"SET Liniennummer 7\nSET Liniennummer\nSET Gattung RE", "RE||-1|||"},
      {"SET Lenkziffer 7\nSET Lenkziffer\nSET Gattung RE", "RE||-1|||"},
      {"SET Gattung X\nSET Linie RB | Nahverkehr 4", "RB|Nahverkehr|4|-1|||"},
      {"SET Lenkziffer 300", "||44|||"},  // kept to 8 bits
      {"SET Lenkziffer 5x", "||5|||"},
      {"SET Verspaetungsmodell \"Standard 2\"\nSET Lenkziffer 7", "||7|Standard 2||"},
      {tabellen + "SET Zuglauf Leer", "||-1||~Kurz|Leer"},
      {tabellen + "SET Reihung Kurz\nSET Zuglauf ( Leer )", "||-1||Kurz|Leer"},
      {"SET Gattung RE | 12", "z. 2: " + betrieblich + " @12"},
      {"SET Linie 12 3", "z. 2: " + gattung + " @12"},
      {"SET Linie", "z. 2: " + gattung + " @Linie"},
      {"SET Linie RE | DB\n5", "z. 2: Syntaxfehler: Keine Liniennummer angegeben. @DB"},
      {"SET Gattungen RE", "z. 2: " + unbekannt + "Gattungen. @SET"},
      {"SET\nlenkziffer 1", "z. 2: " + unbekannt + "lenkziffer. @SET"},
      {"SET Gattung A\nSET Reihung ~ Unbekannt\nSET Gattung B",
       "z. 3 what: invalid unordered_map<K, T> key"},
      {"SET Zuglauf Unbekannt", "z. 2 what: invalid unordered_map<K, T> key"},
      {"SET Lenkziffer x1", "z. 2 what: invalid stoi argument"},
      {"SET Lenkziffer 99999999999", "z. 2 what: stoi argument out of range"},
  };
  for (auto const& [body, expected] : cases)
    EXPECT_EQ(outcome(body), expected) << body;
}

}  // namespace
