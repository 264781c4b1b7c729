#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace tool {

/// Says on a terminal's standard error what is being done, once that takes longer than a second,
/// and wipes it away at the end. Says nothing anywhere else.
class CProgress {
 public:
  explicit CProgress(bool quiet);
  ~CProgress();
  CProgress(const CProgress&) = delete;
  CProgress& operator=(const CProgress&) = delete;

  void Stage(std::string name);
  /// Clears the line, so that something else can be printed; it comes back with the next second.
  void Wipe();

 private:
  void Show();

  std::mutex m_mutex;
  std::condition_variable m_wake;
  std::string m_stage;
  bool m_done = false;
  bool m_shown = false;
  std::thread m_thread;
};

}  // namespace tool
