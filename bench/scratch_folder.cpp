#include "bench/scratch_folder.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

namespace qenzor::bench {

namespace {

std::filesystem::path ScratchRoot() {
  constexpr std::uintmax_t kEnough = std::uintmax_t{4} << 30;
  std::error_code error;
  const std::filesystem::path memory = "/dev/shm";
  const std::filesystem::space_info space = std::filesystem::space(memory, error);
  return !error && space.available >= kEnough ? memory : std::filesystem::temp_directory_path();
}

}  // namespace

ScratchFolder::ScratchFolder() {
  std::string name = ScratchRoot() / "qenzor-bench-XXXXXX";
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
  m_path = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

}  // namespace qenzor::bench
