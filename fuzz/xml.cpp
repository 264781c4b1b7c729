// XML text of both documents: what loads converts, and the document made of it goes round.

#include <unistd.h>

#include <cstdio>
#include <string>

#include "support/documents.h"

namespace {

/// The converters read from a path; this one leads to memory where the system has such a place.
const std::string& InputPath() {
  static const std::string path = [] {
    const char* folder = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    return std::string(folder) + "/qenzor-fuzz-" + std::to_string(getpid()) + ".xml";
  }();
  return path;
}

bool WriteInput(const std::uint8_t* data, std::size_t size) {
  std::FILE* file = std::fopen(InputPath().c_str(), "wb");
  if (file == nullptr) return false;
  const bool written = std::fwrite(data, 1, size, file) == size;
  return std::fclose(file) == 0 && written;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!WriteInput(data, size)) return 0;
  const std::unique_ptr<qenzor::CQenEdit> qen_edit(
      qenzor::CQenTextConverter().ConvertTextToQenEdit(InputPath()));
  if (qen_edit != nullptr && qen_edit->MapData != nullptr) {
    const std::unique_ptr<qenzor::CQen> document(qen_edit->EditDataToQenData());
    fuzz::TakeRound<fuzz::Qen>(*document);
  }
  const std::unique_ptr<qenzor::CZorEdit> zor_edit(
      qenzor::CZorTextConverter().ConvertTextToZorEdit(InputPath()));
  if (zor_edit != nullptr) {
    const std::unique_ptr<qenzor::CZor> document(zor_edit->EditDataToZorData());
    // A brush name longer than its block is written but does not read again.
    qenzor::CMemFile file;
    fuzz::Require(document->Write(&file));
    qenzor::CZor again;
    if (again.Read(file.GetBytes().data(), static_cast<std::uint32_t>(file.GetBytes().size())))
      fuzz::TakeRound<fuzz::Zor>(*document);
  }
  return 0;
}
