// The library embedded in a plug-in: the test loads the plug-in with dlopen (it
// never links the library itself) and lets it compile definitions, the example
// installation among them.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "../support/temp_dir.h"

namespace fs = std::filesystem;

namespace {

using CompileFunction = int (*)(char const*, char*, std::size_t);

std::string readFile(std::string const& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

class Plugin : public ::testing::Test {
 protected:
  void SetUp() override {
    handle = dlopen(FPLC_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle, nullptr) << dlerror();
    compileFunction = reinterpret_cast<CompileFunction>(dlsym(handle, "fplc_plugin_compile"));
    ASSERT_NE(compileFunction, nullptr) << dlerror();
  }
  void TearDown() override {
    if (handle) dlclose(handle);
  }

  // The status and the report, joined by " | "; "@" stands for the directory.
  std::string compile(std::string const& definition) {
    std::string report(1 << 16, '\0');
    int const status = compileFunction(definition.c_str(), report.data(), report.size());
    report.resize(report.find('\0'));
    std::string text = std::to_string(status) + " | " + report;
    for (std::size_t i; (i = text.find(dir)) != std::string::npos;)
      text.replace(i, dir.size(), "@");
    return text;
  }

  void* handle = nullptr;
  CompileFunction compileFunction = nullptr;
  TempDir tmp;
  std::string const dir = tmp.path().string();
};

TEST_F(Plugin, CompilesTheExampleInstallationThroughTheLibrary) {
  fs::copy(FPLC_EXAMPLE_INSTALLATION, dir + "/inst", fs::copy_options::recursive);
  for (char const* layout : {"ahlbach", "bergheide"})
    fs::remove(dir + "/inst/stellwerke/" + layout + "_fahrplan.xml");
  EXPECT_EQ(compile(dir + "/inst/fahrplaene/beispiel.fpl"),
            "0 | @/inst/stellwerke/ahlbach_fahrplan.xml\n"
            "@/inst/stellwerke/bergheide_fahrplan.xml\n");
  std::string const bergheide = readFile(dir + "/inst/stellwerke/bergheide_fahrplan.xml");
  EXPECT_EQ(bergheide.substr(0, 5), "<?xml");
  EXPECT_NE(bergheide.find("<zug nummer=\"60001\""), std::string::npos);
#ifdef FPLC_LIBRARY_SONAME
  // The plug-in brought the shared library into the process.
  void* library = dlopen(FPLC_LIBRARY_SONAME, RTLD_LAZY | RTLD_NOLOAD);
  EXPECT_NE(library, nullptr) << FPLC_LIBRARY_SONAME;
  if (library) dlclose(library);
#endif
}

// Faults thrown inside the library reach the plug-in's handlers: the library's
// Error and the standard library's exceptions alike.
TEST_F(Plugin, ReportsFaultsAndWarningsThrownInsideTheLibrary) {
  std::string const kopf = "Quorvel FplDef 1\n";
  struct {
    std::string definition, ergebnis;
  } const cases[] = {
      {"Quorvel FplDef x\n", "1 | Fehler: z. 1: Kein g\xfcltiger Formatheader vorhanden.\n"},
      {kopf + "SET Reihung Unbekannt\n", "1 | Fehler: z. 2: invalid unordered_map<K, T> key\n"},
      {kopf + "BTR XA Astadt\nBTR XA Bstadt\n",
       "0 | Warnung: z. 3: Widerspruch: BTR XA redefiniert.\n"},
  };
  for (auto const& c : cases)
    EXPECT_EQ(compile(tmp.write("test.fpl", c.definition)), c.ergebnis) << c.definition;
}

}  // namespace
