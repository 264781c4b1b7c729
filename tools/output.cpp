#include "output.h"

#include <unistd.h>

#include <csignal>

#include "failure.h"
#include "qenzor/platform/file_replacement.h"

namespace tool {

namespace {

extern "C" void OnSignal(int signal) {
  qenzor::RemoveScratchFiles();
  static_cast<void>(::raise(signal));  // the handler was reset: this ends the process
}

bool Fill(qenzor::CFile& file, const std::function<bool(qenzor::CFile&)>& write) try {
  return write(file);
} catch (const qenzor::CFileException&) {
  return false;
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

void WriteOutput(const std::string& path, const std::function<bool(qenzor::CFile&)>& write) {
  const bool is_standard = path == "-";
  const std::string name = is_standard ? "standard output" : path;
  qenzor::CFileReplacement output;
  const bool opened = is_standard ? output.OpenDescriptor(STDOUT_FILENO) : output.Open(path);
  if (!opened || !Fill(output.GetFile(), write) || !output.Finish())
    throw CFailure(name, output.GetError());
}

}  // namespace tool
