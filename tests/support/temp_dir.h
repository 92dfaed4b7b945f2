#pragma once
// Test helpers for files: a fresh temporary directory removed afterwards, and a
// guard that restores a global (such as the installation root) when it ends.
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

class TempDir {
 public:
  TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "fplc-test-XXXXXX").string();
    if (mkdtemp(pattern.data())) path_ = std::filesystem::canonical(pattern);
  }
  ~TempDir() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
  }
  TempDir(TempDir const&) = delete;
  TempDir& operator=(TempDir const&) = delete;

  std::filesystem::path const& path() const { return path_; }
  // Writes `content` to `name` below the directory (creating folders) and
  // returns the file's full path.
  std::string write(std::string const& name, std::string const& content) const {
    std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file.string();
  }

 private:
  std::filesystem::path path_;
};

template <typename T>
class Restore {
 public:
  explicit Restore(T& value) : ref_(value), saved_(value) {}
  ~Restore() { ref_ = saved_; }
  Restore(Restore const&) = delete;
  Restore& operator=(Restore const&) = delete;

 private:
  T& ref_;
  T saved_;
};
