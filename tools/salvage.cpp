#include "qenzor/check/salvage.h"

#include <iostream>
#include <limits>

#include "commands.h"
#include "documents.h"
#include "output.h"
#include "progress.h"
#include "qenzor/platform/file_replacement.h"

namespace tool {

namespace {

/// More places than this are only counted.
constexpr std::uint64_t kMaxTold = 1000;

std::string Describe(const qenzor::Loss& loss) {
  const std::string path = qenzor::RenderPath(loss.Path);
  return "byte " + std::to_string(loss.Offset) + ": " +
         (loss.Size == 0 ? "" : std::to_string(loss.Size) + " bytes lost: ") +
         (path.empty() ? "" : path + ": ") + loss.Reason;
}

qenzor::Result<void> SaveBytes(const std::vector<std::uint8_t>& bytes, const std::string& path) {
  qenzor::CFileReplacement file;
  bool done = file.Open(path);
  try {
    if (done) file.GetFile().Write(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    done = done && file.Finish();
  } catch (const qenzor::CFileException&) {
    done = false;
  }
  if (done) return {};
  qenzor::Failure failure;
  failure.Kind = qenzor::FailureKind::kCannotWrite;
  failure.Reason = file.GetError();
  return failure;
}

}  // namespace

int RunSalvage(const Options& options) {
  CProgress progress(options.Quiet);
  progress.Stage("reading");
  const Input input = ReadInput(options.In, options.Kind, Need::kAll);
  const DocumentKind kind = FindKind(input, options.Kind);
  if (kind.IsXml) throw CFailure(input.Name, "is XML; only binary documents can be salvaged");
  progress.Stage("salvaging");
  std::uint64_t places = 0;
  std::uint64_t lost = 0;
  const auto salvaged =
      qenzor::SalvageBinary(input.Bytes, kind.Kind, [&](const qenzor::Loss& loss) {
        lost += loss.Size;
        if (++places > kMaxTold) return;
        progress.Wipe();
        std::cerr << Complaint(input.Name + ": " + Describe(loss));
      });
  if (!salvaged) throw CFailure(input.Name, salvaged.GetFailure().Reason);
  progress.Stage("writing");
  SaveOutput(input, options.Out,
             [&](const std::string& path) { return SaveBytes(salvaged->Bytes, path); });
  if (places == 0) return 0;
  progress.Wipe();
  std::cerr << Complaint(
      input.Name + ": " + std::to_string(places) + (places == 1 ? " place is" : " places are") +
      " damaged, " + std::to_string(lost) + " bytes are lost; " +
      (options.Out == "-" ? "standard output" : options.Out) + " holds what is left");
  return 1;
}

}  // namespace tool
