// Files a definition names: only regular files are read, the includes are
// bounded in number and size, and confinement keeps every file inside allowed folders.
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <ios>
#include <sstream>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

namespace fs = std::filesystem;

class FileAccess : public DefinitionTest {
 protected:
  FileAccess() : savedRoot_(quorvelpath) { quorvelpath = dir.path().string(); }

  // Runs `body` and returns its fault with its place: "test.fpl, z. 2: ...".
  std::string fehler(std::string const& body) {
    fpl.clear(false);
    Error e = runExpectingError(body);
    return (e.token ? fpl.createTokenLocationString(e.token) : "ohne Token") + ": " + e.message;
  }

  TempDir dir;
  std::string const root = dir.path().string();

 private:
  Restore<std::string> savedRoot_;
};

TEST_F(FileAccess, ReadsOnlyRegularFilesAndTurnsIoErrorsIntoTheUsualFaults) {
  ASSERT_EQ(mkfifo((root + "/fifo").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", root + "/zero");
  fs::create_symlink("/proc/self/mem", root + "/mem");  // a regular file whose reading fails
  fs::create_directory(root + "/ordner");
  std::string const dat = "z. 2: Datei \"" + root;
  std::string const aa =
      "z. 2: Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252;
  std::string const bib =
      "z. 2: Bibliothek konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252;
  std::pair<char const*, std::string> const cases[] = {
      {"DAT \"/fifo\"", dat + "/fifo\" konnte nicht geöffnet werden."_cp1252},
      {"DAT \"/zero\"", dat + "/zero\" konnte nicht geöffnet werden."_cp1252},
      {"DAT \"/ordner\"", dat + "/ordner\" konnte nicht geöffnet werden."_cp1252},
      {"DAT \"/mem\"", dat + "/mem\" konnte nicht geöffnet werden."_cp1252},
      {"AA N \"/fifo\" { }", aa},
      {"AA N \"/zero\" { }", aa},
      {"AA N \"/mem\" { }", aa},
      {"BIB 1 \"/fifo\"", bib},
      {"BIB 1 \"/zero\"", bib},
      {"BIB 1 \"/ordner\"", bib},
  };
  for (auto const& [body, expected] : cases)
    EXPECT_EQ(fehler(body), expected) << body;
}

// Delivers `text`, then fails as a file does on an I/O error.
class Lesefehler : public std::streambuf {
 public:
  explicit Lesefehler(std::string text) : text_(std::move(text)) {}

 protected:
  int_type underflow() override {
    if (geliefert_) throw std::ios_base::failure("Lesefehler");
    geliefert_ = true;
    setg(text_.data(), text_.data(), text_.data() + text_.size());
    return traits_type::to_int_type(text_[0]);
  }

 private:
  std::string text_;
  bool geliefert_ = false;
};

TEST_F(FileAccess, AnIoErrorWhileReadingIsAFaultAtWhereTheReadingStopped) {
  Lesefehler hauptdatei("Quorvel FplDef 1\nSET Gattung \"offen");
  std::istream in(&hauptdatei);
  try {
    fpl.read(in, "haupt.fpl");
    ADD_FAILURE() << "no Error thrown";
  } catch (Error const& e) {
    EXPECT_EQ(fault(e), "z. 2 Gattung: Datei \"haupt.fpl\" konnte nicht geöffnet werden."_cp1252);
  }
  // An include handed in by a front-end fails at its DAT command.
  fpl.clear(false);
  fpl.setDefinitionsQuelle([](std::string const&) -> std::unique_ptr<std::istream> {
    struct Text : std::istream {
      Lesefehler puffer{"Quorvel FplDef 1\n"};
      Text() : std::istream(nullptr) { rdbuf(&puffer); }
    };
    return std::make_unique<Text>();
  });
  EXPECT_EQ(fehler("SET Gattung A\nDAT \"/a.fpl\""),
            "test.fpl, z. 3: Datei \"" + root + "/a.fpl\" konnte nicht geöffnet werden."_cp1252);
}

// d0 includes d1 twice, d1 includes d2 twice, ...: the includes double per level.
void writeDoublingIncludes(TempDir const& dir, int levels) {
  for (int i = 0; i < levels; ++i) {
    std::string const next = "DAT \"/d" + std::to_string(i + 1) + ".fpl\"\n";
    dir.write("d" + std::to_string(i) + ".fpl", kHeader + next + next);
  }
  dir.write("d" + std::to_string(levels) + ".fpl", kHeader + std::string("SET Gattung A\n"));
}

TEST_F(FileAccess, LimitsTheNumberOfIncludesAndTheDefinitionTextInTotal) {
  writeDoublingIncludes(dir, 14);  // 2^15 - 2 includes from d0 on
  EXPECT_EQ(
      fehler("DAT \"/d0.fpl\""),
      root + "/d12.fpl, z. 2: Datei \"" + root +
          "/d13.fpl\" kann nicht eingebunden werden: mehr als 10000 DAT-Kommandos insgesamt.");
  EXPECT_EQ(fpl.getTokenLists().size(), 10001u);

  // Smaller limits, reached exactly and passed by one.
  std::string const text = kHeader + std::string("// ") + std::string(100, 'x') + "\n";
  dir.write("gross.fpl", text);
  std::string const zweimal = "DAT \"/gross.fpl\"\nDAT \"/gross.fpl\"";
  std::size_t const haupt = std::string(kHeader).size() + zweimal.size();
  std::string const zuGross =
      "Datei \"" + root + "/gross.fpl\" kann nicht gelesen werden: mehr als ";
  fpl.setLesegrenzen(1, haupt + text.size());
  EXPECT_EQ(fehler(zweimal), "test.fpl, z. 3: Datei \"" + root +
                                 "/gross.fpl\" kann nicht eingebunden werden: mehr als 1 "
                                 "DAT-Kommandos insgesamt.");
  fpl.setLesegrenzen(2, haupt + text.size() * 2);
  fpl.clear(false);
  EXPECT_NO_THROW(run(zweimal));
  fpl.setLesegrenzen(2, haupt + text.size() * 2 - 1);
  EXPECT_EQ(fehler(zweimal), "test.fpl, z. 3: " + zuGross +
                                 std::to_string(haupt + text.size() * 2 - 1) +
                                 " Bytes Definitionstext in allen Dateien zusammen.");
  // The main file itself, cut after "Quorvel Fp".
  fpl.setLesegrenzen(2, 10);
  EXPECT_EQ(fehler("SET Gattung A"),
            "z. 1: Datei \"test.fpl\" kann nicht gelesen werden: mehr als 10 Bytes "
            "Definitionstext in allen Dateien zusammen.");
  // No limit at all.
  fpl.setLesegrenzen(SIZE_MAX, SIZE_MAX);
  fpl.clear(false);
  run("SET Gattung A");
  EXPECT_EQ(fpl.getGattungSetting(), "A");
}

class Confinement : public FileAccess {
 protected:
  Confinement() {
    fs::create_directories(inst);
    fs::create_directories(draussen);
    fpl.setErlaubteVerzeichnisse({inst});
    quorvelpath = inst;
  }
  std::string const inst = root + "/inst";
  std::string const draussen = root + "/draussen";
};

TEST_F(Confinement, RefusesEveryFileOutsideTheAllowedFoldersAtItsCommand) {
  dir.write("draussen/a.fpl", kHeader + std::string("SET Gattung X\n"));
  dir.write("inst/fpl/ok.fpl", kHeader + std::string("SET Gattung A\n"));
  dir.write("inst/fpl/b.fpl", kHeader + std::string("SET Gattung B\nDAT \"/../draussen/a.fpl\"\n"));
  fs::create_symlink(draussen + "/a.fpl", inst + "/link.fpl");
  std::string const aussen = " liegt außerhalb der erlaubten Verzeichnisse \""_cp1252 + inst +
                             "\" und wird nicht verwendet.";
  std::string const aufgeloest = " (aufgelöst \""_cp1252 + draussen;
  std::pair<std::string, std::string> const cases[] = {
      {"DAT \"/../draussen/a.fpl\"",
       "z. 2: Datei \"" + inst + "/../draussen/a.fpl\"" + aufgeloest + "/a.fpl\")" + aussen},
      {"DAT \"/link.fpl\"",
       "z. 2: Datei \"" + inst + "/link.fpl\"" + aufgeloest + "/a.fpl\")" + aussen},
      {"DAT \"/fpl/b.fpl\"", inst + "/fpl/b.fpl, z. 3: Datei \"" + inst + "/../draussen/a.fpl\"" +
                                 aufgeloest + "/a.fpl\")" + aussen},
      {"AA N \"/../draussen/n.stwa\" { }",
       "z. 2: Datei \"" + inst + "/../draussen/n.stwa\"" + aufgeloest + "/n.stwa\")" + aussen},
      {"BIB 1 \"/../draussen/lib.xml\"",
       "z. 2: Datei \"" + inst + "/../draussen/lib.xml\"" + aufgeloest + "/lib.xml\")" + aussen},
      {"OUT P \"/../draussen/aus.xml\"", ""},  // no layout: nothing to write
      {"DAT \"/fpl/ok.fpl\"", ""},
  };
  for (auto const& [body, expected] : cases) {
    fpl.clear(false);
    std::string outcome;
    try {
      run(body, false);
    } catch (Error const& e) {
      outcome = fpl.createTokenLocationString(e.token) + ": " + e.message;
    }
    EXPECT_EQ(outcome, expected) << body;
    EXPECT_NE(fpl.getGattungSetting(), "X") << body;  // the file outside was not read
  }

  // An absolute path, possible when no installation root is set.
  quorvelpath.clear();
  EXPECT_EQ(fehler("DAT \"" + draussen + "/a.fpl\""),
            "z. 2: Datei \"" + draussen + "/a.fpl\"" + aussen);
}

TEST_F(Confinement, WritesNoTimetableOutsideTheAllowedFolders) {
  dir.write("inst/n.stwa", "<aussenanlage/>");
  std::string const body = "AA N \"/n.stwa\" { }\nOUT P \"/../draussen/aus.xml\"";
  Error e = runExpectingError(body, false);
  EXPECT_EQ(fault(e), "z. 3 OUT: Datei \"" + inst + "/../draussen/aus.xml\" (aufgelöst \""_cp1252 +
                          draussen +
                          "/aus.xml\") liegt außerhalb der erlaubten Verzeichnisse \""_cp1252 +
                          inst + "\" und wird nicht verwendet.");
  EXPECT_FALSE(fs::exists(draussen + "/aus.xml"));
  fpl.clear(false);
  run("AA N \"/n.stwa\" { }\nOUT P \"/aus.xml\"", false);
  EXPECT_TRUE(fs::exists(inst + "/aus.xml"));
}

}  // namespace
