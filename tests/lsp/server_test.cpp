#include "lsp/server.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "lsp_test_support.h"
#include "support/temp_dir.h"

namespace fplc::lsp {
namespace {

using nlohmann::json;
using test::at;
using test::didChange;
using test::didOpen;
using test::framed;
using test::initialize;
using test::notification;
using test::request;
using test::serve;

// Two runs that follow each other, a day record and two clock-face series.
std::string const kFahrplan =
    "Quorvel FplDef 1\n"                                  // line 0
    "BTR XA Ahof\n"                                       // 1
    "BTR XB Bhof\n"                                       // 2
    "VT Werktags 12345 \"13.12.2026\" \"11.12.2027\"\n"   // 3
    "ZL Hin {\n"                                          // 4
    "  XA . G1 H - 6:00\n"                                // 5
    "  XB . G1 H 6:30 - FOLGE ZN +1\n"                    // 6
    "}\n"                                                 // 7
    "ZL Rueck {\n"                                        // 8
    "  XB . G1 H - 0:00\n"                                // 9
    "  XA . G1 H 0:30 -\n"                                // 10
    "}\n"                                                 // 11
    "SET Zuglauf Hin\n"                                   // 12
    "TZ 101 103 2 0:00 1:00 Werktags\n"                   // 13
    "SET Zuglauf Rueck\n"                                 // 14
    "TZ 102 104 2 6:40 1:00 (Mo + Di + Mi + Do + Sa)\n";  // 15

json range(int line, int from, int to) {
  return {{"start", {{"line", line}, {"character", from}}},
          {"end", {{"line", line}, {"character", to}}}};
}

std::vector<std::string> labelsOf(json const& response) {
  std::vector<std::string> labels;
  for (json const& item : response.at("result").at("items"))
    labels.push_back(item["label"]);
  return labels;
}

json errorCode(json const& response) {
  return response.is_null() ? json() : response["error"]["code"];
}

class ServerTest : public ::testing::Test {
 protected:
  TempDir dir;
  std::string path = dir.write("plan.fpl", kFahrplan);
};

TEST_F(ServerTest, AnswersEveryFaultyRequestWithItsProtocolError) {
  test::Session s = serve(request(7, "textDocument/hover") + initialize() + rahmen("{bad json") +
                          rahmen("[1]") + request(2, "unknown/method") + request(3, "initialize") +
                          request(4, "textDocument/hover") + request(5, "shutdown") +
                          request(6, "textDocument/hover") + notification("exit"));
  EXPECT_EQ(errorCode(s.response(7)), -32002);  // not initialized
  EXPECT_TRUE(s.response(1)["result"]["capabilities"]["hoverProvider"].get<bool>());
  std::vector<int> nullIdCodes;
  for (json const& m : s.messages)
    if (m.contains("id") && m["id"].is_null()) nullIdCodes.push_back(m["error"]["code"]);
  EXPECT_EQ(nullIdCodes, (std::vector<int>{-32700, -32600}));
  EXPECT_EQ(errorCode(s.response(2)), -32601);
  EXPECT_EQ(errorCode(s.response(3)), -32602);  // initialize twice
  EXPECT_EQ(errorCode(s.response(4)), -32602);  // no textDocument
  EXPECT_TRUE(s.response(5).contains("result"));
  EXPECT_EQ(errorCode(s.response(6)), -32600);  // after shutdown
  EXPECT_EQ(s.exitStatus, 0);
}

TEST_F(ServerTest, ExitsWithStatusOneWithoutShutdown) {
  EXPECT_EQ(serve(initialize() + notification("exit")).exitStatus, 1);
  EXPECT_EQ(serve(initialize()).exitStatus, 1);  // the input simply ends
}

TEST_F(ServerTest, LogsAFramingFaultAndReadsOn) {
  test::Session s = serve("garbage\r\n" + initialize());
  ASSERT_FALSE(s.messages.empty());
  EXPECT_EQ(s.messages[0]["method"], "window/logMessage");
  EXPECT_EQ(s.messages[0]["params"]["message"], "fplc-lsp: Ungültige Kopfzeile: garbage");
  EXPECT_TRUE(s.response(1).contains("result"));
}

TEST_F(ServerTest, PublishesTheFaultOfEachVersionAtItsTokenRange) {
  std::string typo = kFahrplan;
  typo.replace(typo.find("TZ 101"), 2, "TX");
  test::Session s = serve(initialize() + didOpen(path, typo));
  json d = s.diagnostics(path);
  ASSERT_EQ(d.size(), 1u) << d.dump();
  EXPECT_EQ(d[0]["message"], "Unbekanntes Kommando: 'TX'.");
  EXPECT_EQ(d[0]["range"], range(13, 0, 2));
  EXPECT_EQ(d[0]["severity"], 1);
  EXPECT_EQ(d[0]["source"], "fplc");

  s = serve(initialize() + didOpen(path, typo) + didChange(path, kFahrplan, 2));
  EXPECT_EQ(s.diagnostics(path), json::array());
}

TEST_F(ServerTest, PlacesFaultsAfterUmlautsInUtf16Units) {
  // "Äö" is four bytes of UTF-8 and two characters of Windows-1252.
  std::string const text = "Quorvel FplDef 1\nSET Gattung Äö | 1\n";
  std::string utf8File = dir.write("utf8.fpl", text);
  std::string cp1252File = dir.write("cp1252.fpl", utf8ToCp1252(text));
  test::Session s = serve(initialize() + didOpen(utf8File, text) + didOpen(cp1252File, text));
  for (std::string const& file : {utf8File, cp1252File}) {
    json d = s.diagnostics(file);
    ASSERT_EQ(d.size(), 1u) << file;
    EXPECT_EQ(d[0]["message"], "Syntaxfehler: Keine betriebliche Gattung angegeben.");
    EXPECT_EQ(d[0]["range"], range(1, 17, 18)) << file;
  }
}

TEST_F(ServerTest, ReportsWhatTheLibraryThrowsAndAnUnusableInstallation) {
  std::string const text = "Quorvel FplDef 1\nSET Reihung Keine\n";
  test::Session s = serve(initialize() + didOpen(path, text));
  json d = s.diagnostics(path);
  ASSERT_EQ(d.size(), 1u);
  EXPECT_EQ(d[0]["range"], range(1, 0, 3));  // the command being run
  EXPECT_EQ(d[0]["severity"], 1);

  std::string const root = (dir.path() / "nichts").string();
  s = serve(request(1, "initialize", {{"initializationOptions", {{"installationRoot", root}}}}) +
            didOpen(path, kFahrplan));
  d = s.diagnostics(path);
  ASSERT_EQ(d.size(), 1u);
  EXPECT_EQ(d[0]["message"], "\"" + root +
                                 "\" ist kein Installationsverzeichnis: "
                                 "core/configTemplate/basesettings.xml fehlt.");
  EXPECT_EQ(d[0]["range"], range(0, 0, 16));
}

TEST_F(ServerTest, CompilesOnlyTheLastOfTheChangesThatArriveTogether) {
  std::vector<json> sent;
  Server server([&sent](json const& m) { sent.push_back(m); });
  auto body = [](std::string const& framedMessage) {
    return framedMessage.substr(framedMessage.find("\r\n\r\n") + 4);
  };
  server.verarbeite(body(request(1, "initialize")));
  server.verarbeite(body(didOpen(path, kFahrplan)));
  for (int version = 2; version <= 4; ++version)
    server.verarbeite(
        body(didChange(path, "Quorvel FplDef 1\nX" + std::to_string(version) + " a\n", version)));
  EXPECT_EQ(server.kompilierungen(), 0);
  server.leerlauf();
  EXPECT_EQ(server.kompilierungen(), 1);
  ASSERT_EQ(sent.back()["method"], "textDocument/publishDiagnostics");
  EXPECT_EQ(sent.back()["params"]["diagnostics"][0]["message"], "Unbekanntes Kommando: 'X4'.");
  server.leerlauf();  // nothing changed since
  EXPECT_EQ(server.kompilierungen(), 1);
  server.verarbeite(
      body(notification("textDocument/didSave", {{"textDocument", {{"uri", uriOfPath(path)}}}})));
  server.leerlauf();
  EXPECT_EQ(server.kompilierungen(), 2);
}

TEST_F(ServerTest, JumpsFromANameToTheLineThatDefinesIt) {
  struct Case {
    int line, character;
    json expected;  // range in the plan, or null
  };
  std::vector<Case> const cases = {
      {12, 13, range(4, 0, 6)},   // run "Hin" after SET Zuglauf -> ZL line
      {9, 3, range(2, 0, 6)},     // operating point XB on a stop line -> BTR line
      {13, 25, range(3, 0, 11)},  // day record Werktags -> VT line
      {13, 0, nullptr},           // a keyword defines nothing
      {13, 4, nullptr},           // a train number
  };
  std::string input = initialize() + didOpen(path, kFahrplan);
  for (std::size_t i = 0; i < cases.size(); ++i)
    input += request(10 + int(i), "textDocument/definition",
                     at(path, cases[i].line, cases[i].character));
  test::Session s = serve(input);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    json result = s.response(10 + int(i))["result"];
    if (cases[i].expected.is_null()) {
      EXPECT_TRUE(result.is_null()) << i;
      continue;
    }
    EXPECT_EQ(result["uri"], uriOfPath(path)) << i;
    EXPECT_EQ(result["range"], cases[i].expected) << i;
  }
}

TEST_F(ServerTest, JumpsFromARouteBookNumberToItsSegment) {
  std::string const text =
      "Quorvel FplDef 1\nBTR XA Ahof\nBTR XB Bhof\nZLS XA 9 XB {\n}\nZLS XA 7 XB {\n}\n"
      "ZL L {\n  XA . G1 H - 0:00\n  $ VzG 7\n  XB . G1 H 0:10 -\n}\n";
  test::Session s = serve(initialize() + didOpen(path, text) +
                          request(2, "textDocument/definition", at(path, 9, 8)) +
                          request(3, "textDocument/definition", at(path, 8, 2)));
  EXPECT_EQ(s.response(2)["result"]["range"], range(5, 0, 6));
  EXPECT_EQ(s.response(3)["result"]["range"], range(1, 0, 6));  // XA -> its BTR line
}

TEST_F(ServerTest, JumpsToTheLayoutFileForAnOperatingPointOnlyItDefines) {
  std::filesystem::copy(FPLC_SOURCE_DIR "/examples/installation", dir.path() / "inst",
                        std::filesystem::copy_options::recursive);
  std::string const plan = (dir.path() / "inst/fahrplaene/test.fpl").string();
  std::string const text =
      "Quorvel FplDef 1\nAA Ahlbach \"$(StwDir)ahlbach.stwa\" AB {\n}\n"
      "ZL L {\n  XHK . Bk1 B - 0:00\n  XAB . N1 H 0:05 -\n}\n";
  test::Session s = serve(initialize() + didOpen(plan, text) +
                          request(2, "textDocument/definition", at(plan, 4, 3)));
  json result = s.response(2)["result"];
  ASSERT_TRUE(result.is_object()) << s.response(2).dump();
  EXPECT_EQ(result["uri"], uriOfPath((dir.path() / "inst/stellwerke/ahlbach.stwa").string()));
  EXPECT_EQ(result["range"], range(13, 0, 0));  // <betriebsstelle name="Heidekrug" ...>
}

TEST_F(ServerTest, JumpsIntoAnIncludedFileTheEditorHasOpen) {
  // The included file exists only in the editor, not on disk.
  std::string const included = (dir.path() / "laeufe.fpl").string();
  std::string const main =
      "Quorvel FplDef 1\nBTR XA Ahof\nDAT \"" + included + "\"\nZ 1 (0:00 Pendel) Mo-Fr\n";
  std::string const runs =
      "Quorvel FplDef 1\nBTR XB Bhof\nZL Pendel {\n  XA . G1 H - 0:00\n  XB . G1 H 0:10 -\n}\n";
  test::Session s = serve(initialize() + didOpen(included, runs) + didOpen(path, main) +
                          request(2, "textDocument/definition", at(path, 3, 11)));
  EXPECT_EQ(s.diagnostics(path), json::array());
  EXPECT_EQ(s.response(2)["result"]["uri"], uriOfPath(included));
  EXPECT_EQ(s.response(2)["result"]["range"], range(2, 0, 9));
}

// A definition in the editor may include from disk only what lies beside it or in
// its installation; a buffer the editor has open is the author's own and is read.
TEST_F(ServerTest, ReadsIncludesFromDiskOnlyBesideTheDocument) {
  TempDir aussen;
  std::string const draussen = aussen.write("draussen.fpl", "Quorvel FplDef 1\nBTR XB Bhof\n");
  std::string const offen = (aussen.path() / "offen.fpl").string();
  std::string const main = "Quorvel FplDef 1\nDAT \"" + offen + "\"\nDAT \"" + draussen + "\"\n";
  test::Session s =
      serve(initialize() + didOpen(offen, "Quorvel FplDef 1\nBTR XA Ahof\n") + didOpen(path, main));
  json d = s.diagnostics(path);
  ASSERT_EQ(d.size(), 1u) << d.dump();
  EXPECT_EQ(d[0]["range"], range(2, 0, 3));
  EXPECT_EQ(d[0]["message"], "Datei \"" + draussen +
                                 "\" liegt außerhalb der erlaubten Verzeichnisse \"" +
                                 dir.path().string() + "\" und wird nicht verwendet.");
}

TEST_F(ServerTest, HoversShowTrainsRunsAndDays) {
  struct Case {
    int line, character;
    std::string expected;  // "" for no hover
  };
  std::vector<Case> const cases = {
      {13, 0,
       "- Zug 101: Mo, Di, Mi, Do und Fr, gültig 13.12.2026 bis 11.12.2027, ab 06:00, "
       "Folgezug 102\n"
       "- Zug 103: Mo, Di, Mi, Do und Fr, gültig 13.12.2026 bis 11.12.2027, ab 07:00, "
       "Folgezug 104\n"},
      {12, 13, "Zuglauf Hin\n```\nAhof G1  an -  ab 06:00\nBhof G1  an 06:30  ab -\n```"},
      {15, 24, "Verkehrstage: Mo, Di, Mi, Do und Sa"},
      {13, 25, "Verkehrstage Werktags: Mo, Di, Mi, Do und Fr, gültig 13.12.2026 bis 11.12.2027"},
      {1, 4, ""},  // an operating point has no hover
  };
  std::string input = initialize() + didOpen(path, kFahrplan);
  for (std::size_t i = 0; i < cases.size(); ++i)
    input +=
        request(10 + int(i), "textDocument/hover", at(path, cases[i].line, cases[i].character));
  test::Session s = serve(input);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    json result = s.response(10 + int(i))["result"];
    std::string shown = result.is_null() ? "" : result["contents"]["value"].get<std::string>();
    EXPECT_EQ(shown, cases[i].expected) << i;
  }
}

TEST_F(ServerTest, OutlinesTheDefinition) {
  test::Session s = serve(
      initialize() + didOpen(path, kFahrplan) +
      request(2, "textDocument/documentSymbol", {{"textDocument", {{"uri", uriOfPath(path)}}}}));
  json const symbols = s.response(2)["result"];
  std::vector<std::string> names;
  for (json const& symbol : symbols)
    names.push_back(symbol["name"]);
  EXPECT_EQ(names, (std::vector<std::string>{"BTR XA", "BTR XB", "VT Werktags", "ZL Hin",
                                             "ZL Rueck", "TZ 101 103", "TZ 102 104"}));
  json const& run = symbols.at(3);
  EXPECT_EQ(run["range"]["start"]["line"], 4);
  EXPECT_EQ(run["range"]["end"], (json{{"line", 7}, {"character", 1}}));
  EXPECT_EQ(run["selectionRange"], range(4, 3, 6));
}

TEST_F(ServerTest, CompletesWhatFitsTheCursor) {
  struct Case {
    std::string line;  // appended as line 16, the cursor at its end
    std::vector<std::string> expected;
  };
  std::vector<Case> const cases = {
      {"",
       {"AUT", "BTR", "AA", "LZ", "BIB", "FZG", "RHG", "VT", "ZL", "ZLS", "SET", "TZ", "Z", "M",
        "DAT", "BIF", "OUT"}},
      {"SET ",
       {"Gattung", "Liniennummer", "Linie", "Lenkziffer", "Reihung", "Zuglauf",
        "Verspaetungsmodell"}},
      {"SET Zuglauf ", {"Hin", "Rueck"}},
      {"Z 1 (0:00 Hin) ", {"Hin", "Rueck", "Werktags", "XA", "XB"}},
  };
  for (Case const& c : cases) {
    std::string const text = kFahrplan + c.line;
    test::Session s =
        serve(initialize() + didOpen(path, text) +
              request(2, "textDocument/completion", at(path, 16, static_cast<int>(c.line.size()))));
    std::vector<std::string> labels = labelsOf(s.response(2));
    std::sort(labels.begin(), labels.end());
    std::vector<std::string> expected = c.expected;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(labels, expected) << c.line;
  }
}

TEST_F(ServerTest, CompletesModifiersOnAStopLine) {
  std::string text = kFahrplan;
  text.replace(text.find("  XA . G1 H 0:30 -"), 18, "  XA . G1 H 0:30 - ");
  test::Session s = serve(initialize() + didOpen(path, text) +
                          request(2, "textDocument/completion", at(path, 10, 19)) +
                          request(3, "textDocument/completion", at(path, 10, 2)));
  std::vector<std::string> labels = labelsOf(s.response(2));
  EXPECT_EQ(labels, (std::vector<std::string>{"WENDE", "GATTUNG", "LINIE", "FOLGE ZN", "LZ"}));
  labels = labelsOf(s.response(3));
  std::sort(labels.begin(), labels.end());
  EXPECT_EQ(labels, (std::vector<std::string>{"XA", "XB"}));
}

}  // namespace
}  // namespace fplc::lsp
