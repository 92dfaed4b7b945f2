#include <stdexcept>
#include <string>

#include "support/definition_test.h"

namespace {

using SetCommand = DefinitionTest;

TEST_F(SetCommand, SetsTheCurrentSettingsOrReportsTheFault) {
  // "Gattung|Linie|Lenkziffer|Modell|Reihung|Zuglauf", or a standard exception at its command.
  auto settings = [&](std::string const& body) -> std::string {
    try {
      return outcome(body, [&] {
        return fpl.getGattungSetting() + "|" + fpl.getLiniennummerSetting() + "|" +
               std::to_string(fpl.getLenkzifferSetting()) + "|" +
               fpl.getVerspaetungsmodellSetting() + "|" +
               (fpl.getReihungGedrehtSetting() ? "~" : "") +
               (fpl.getReihungSetting() ? fpl.getReihungSetting()->name : "") + "|" +
               (fpl.getZuglaufSetting() ? fpl.getZuglaufSetting()->name : "");
      });
    } catch (std::exception const& e) {
      return "z. " + std::to_string(fpl.getCurrentCommand()->line()) + " what: " + e.what();
    }
  };
  std::string const tabellen = "ZL Leer { }\nRHG Kurz\nSET Reihung ~ Kurz\n";
  std::pair<std::string, std::string> const cases[] = {
      {"SET Liniennummer 12a\nSET Gattung RE | IRE weiter", "RE|IRE|12a|-1|||"},
      // An optional value is never taken from the next line.
      {"SET Liniennummer 7\nSET Liniennummer\nSET Lenkziffer 7\nSET Lenkziffer\nSET Gattung RE",
       "RE||-1|||"},
      {"SET Gattung X\nSET Linie RB | Nahverkehr 4", "RB|Nahverkehr|4|-1|||"},
      {"SET Lenkziffer 300", "||44|||"},  // kept to 8 bits
      {"SET Verspaetungsmodell \"Standard 2\"\nSET Lenkziffer 5x", "||5|Standard 2||"},
      {tabellen + "SET Zuglauf Leer", "||-1||~Kurz|Leer"},
      {tabellen + "SET Reihung Kurz\nSET Zuglauf ( Leer )", "||-1||Kurz|Leer"},
      {"SET Gattung RE | 12", "z. 2 12: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"SET Linie", "z. 2 Linie: Syntaxfehler: Keine Gattung angegeben."},
      {"SET Linie RE | DB\n5", "z. 2 DB: Syntaxfehler: Keine Liniennummer angegeben."},
      {"SET\nlenkziffer 1", "z. 2 SET: SET-Kommando mit unbekannter Statusvariable: lenkziffer."},
      {"SET Gattung A\nSET Reihung ~ Unbekannt", "z. 3 what: invalid unordered_map<K, T> key"},
      {"SET Zuglauf Unbekannt", "z. 2 what: invalid unordered_map<K, T> key"},
      {"SET Lenkziffer x1", "z. 2 what: invalid stoi argument"},
      {"SET Lenkziffer 99999999999", "z. 2 what: stoi argument out of range"},
  };
  for (auto const& [body, expected] : cases)
    EXPECT_EQ(settings(body), expected) << body;
}

}  // namespace
