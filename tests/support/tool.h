#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace qenzor::testing {

namespace fs = std::filesystem;

inline std::string Load(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void Save(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

struct Outcome {
  int Status;  ///< -1 when a signal ended it
  std::string Out;
  std::string Err;
};

/// Runs the program in a folder of the test's own.
class Tool : public ::testing::Test {
 protected:
  Tool() {
    std::string name = (fs::temp_directory_path() / "qenzor-tool-XXXXXX").string();
    m_folder = ::mkdtemp(name.data());
  }
  ~Tool() override { fs::remove_all(m_folder); }

  fs::path At(const std::string& name) const { return m_folder / name; }
  static std::string Sample(const std::string& name) { return QENZOR_SAMPLES "/" + name; }

  /// Runs a line of the shell, in which $q is the program.
  Outcome RunShell(const std::string& line, const std::string& input = "/dev/null") const {
    const std::string command = "cd '" + m_folder.string() + "' && q='" QENZOR_TOOL "' && { " +
                                line + "\n} >.stdout 2>.stderr <'" + input + "'";
    const int status = std::system(command.c_str());
    Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, Load(At(".stdout")),
                    Load(At(".stderr"))};
    fs::remove(At(".stdout"));
    fs::remove(At(".stderr"));
    return outcome;
  }
  Outcome Run(const std::string& arguments, const std::string& input = "/dev/null") const {
    return RunShell("\"$q\" " + arguments, input);
  }
  void ExpectDone(const std::string& arguments, const std::string& said = "") const {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.Status, 0) << arguments;
    EXPECT_EQ(outcome.Err, said) << arguments;
  }
  /// Fails with that one line and nothing else.
  void ExpectRefused(const std::string& arguments, const std::string& message) const {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.Status, 1) << arguments;
    EXPECT_EQ(outcome.Out, "") << arguments;
    EXPECT_EQ(outcome.Err, "qenzor: " + message + "\n") << arguments;
  }
  std::size_t CountFiles() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(m_folder), fs::directory_iterator()));
  }

  fs::path m_folder;
};

}  // namespace qenzor::testing
