// tests/support/temporary_folder.h - a folder of a test's own, gone with everything in it when the test ends.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace corvelle::testing {

class TemporaryFolder {
 public:
  TemporaryFolder()
      : path_(std::filesystem::temp_directory_path() / ("corvelle-" + std::to_string(std::random_device()()))) {
    std::filesystem::create_directories(path_);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Makes an empty file of that name, and the folders above it.
  std::filesystem::path add_file(const std::filesystem::path& name) const {
    std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    EXPECT_TRUE(std::ofstream(file).good()) << file;
    return file;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace corvelle::testing
