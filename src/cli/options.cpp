#include "cli/options.h"

#include <CLI/CLI.hpp>

#include "cli/exit_status.h"

#ifndef FPLC_VERSION
#define FPLC_VERSION "unknown"
#endif

namespace {

void describeOptions(CLI::App& app, Options& options) {
  app.add_option("-r,--root", options.root,
                 "Installation root; it must hold core/configTemplate/basesettings.xml. "
                 "Without it the root is searched from the definition file, then from fplc itself.")
      ->option_text("DIR");
  app.add_flag("-n,--check", options.check,
               "Execute without writing timetable files (OUT writes nothing)");
  app.add_flag("--no-validate", options.noValidate, "Do not run the validation");
  app.add_flag("--json", options.json, "Print the report on stdout as JSON");
  app.add_flag("-W,--werror", options.werror, "Warnings make the exit status 1");
  app.add_flag("-q,--quiet", options.quiet, "Print errors only");
  app.add_flag("--confine", options.confine,
               "Read and write files only inside the installation root and the folder of the "
               "definition file (after resolving .. and symbolic links)");
  app.set_version_flag("-V,--version", std::string("fplc ") + FPLC_VERSION);
  app.add_option("DEFINITION", options.definition, "The timetable definition file")->required();
}

}  // namespace

std::variant<Options, int> parseOptions(int argc, char** argv) {
  CLI::App app{"fplc: compiles a timetable definition into the simulator's timetable files.",
               "fplc"};
  Options options;
  describeOptions(app, options);
  try {
    app.parse(argc, argv);
  } catch (CLI::Success const& done) {  // --help, --version
    return app.exit(done);
  } catch (CLI::ParseError const& usage) {
    app.exit(usage);
    return exitStatusUsage;
  }
  return options;
}
