#include "output.h"

#include <csignal>

#include "qenzor/platform/file_replacement.h"

namespace tool {

namespace {

extern "C" void OnSignal(int signal) {
  qenzor::RemoveScratchFiles();
  static_cast<void>(::raise(signal));  // the handler was reset: this ends the process
}

}  // namespace

void WatchSignals() {
  // A file that grows past a limit is a failed write like any other.
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  struct sigaction action {};
  action.sa_handler = &OnSignal;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
  }
}

void SaveOutput(const Input& input, const std::string& path,
                const std::function<qenzor::Result<void>(const std::string&)>& save) {
  const bool is_standard = path == "-";
  const auto saved = save(is_standard ? "/dev/stdout" : path);
  if (saved) return;
  qenzor::Failure failure = saved.GetFailure();
  const bool is_from_input = failure.Kind == qenzor::FailureKind::kCannotStore;
  failure.Path.clear();
  throw CFailure(is_from_input ? input.Name
                 : is_standard ? "standard output"
                               : path,
                 failure.Describe());
}

void WriteOutput(const std::string& path,
                 const std::function<qenzor::Result<void>(qenzor::CFile&)>& write) {
  const bool is_standard = path == "-";
  qenzor::CFileReplacement file;
  bool done = file.Open(is_standard ? "/dev/stdout" : path);
  try {
    if (done) {
      const auto written = write(file.GetFile());
      done = static_cast<bool>(written);
      if (!done && written.GetFailure().Kind != qenzor::FailureKind::kCannotWrite)
        throw CFailure(path, written.GetFailure().Describe());
    }
    done = done && file.Finish();
  } catch (const qenzor::CFileException&) {
    done = false;
  }
  if (!done) throw CFailure(is_standard ? "standard output" : path, file.GetError());
}

}  // namespace tool
