#pragma once
// Runs the built fplc in a fresh directory, as a user's shell would.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <fstream>
#include <sstream>
#include <string>

#include "support/temp_dir.h"

inline std::string readFile(std::string const& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

class FplcRunner : public ::testing::Test {
 protected:
  // The exit status, stdout and stderr of `fplc ARGS` run in the directory,
  // joined by " | "; "@" stands for the directory.
  std::string fplc(std::string const& args) {
    std::string const command =
        "cd '" + dir + "' && '" FPLC_BINARY "' " + args + " >stdout.txt 2>stderr.txt";
    int const raw = std::system(command.c_str());
    std::string text = std::to_string(WIFEXITED(raw) ? WEXITSTATUS(raw) : -1) + " | " +
                       readFile(dir + "/stdout.txt") + " | " + readFile(dir + "/stderr.txt");
    for (std::size_t i; (i = text.find(dir)) != std::string::npos;)
      text.replace(i, dir.size(), "@");
    return text;
  }

  TempDir tmp;
  std::string const dir = tmp.path().string();
};
