#include "progress.h"

#include <unistd.h>

#include <csignal>
#include <iostream>

namespace tool {

CProgress::CProgress(bool quiet) {
  if (quiet || ::isatty(STDERR_FILENO) == 0) return;
  // Signals are the main thread's to handle.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, &before);
  m_thread = std::thread([this] { Show(); });
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

CProgress::~CProgress() {
  {
    const std::lock_guard lock(m_mutex);
    m_done = true;
  }
  m_wake.notify_one();
  if (m_thread.joinable()) m_thread.join();
}

void CProgress::Stage(std::string name) {
  const std::lock_guard lock(m_mutex);
  m_stage = std::move(name);
}

void CProgress::Wipe() {
  const std::lock_guard lock(m_mutex);
  if (m_shown) std::cerr << "\r\033[K" << std::flush;
  m_shown = false;
}

void CProgress::Show() {
  std::unique_lock lock(m_mutex);
  for (int seconds = 1; !m_wake.wait_for(lock, std::chrono::seconds(1), [this] { return m_done; });
       ++seconds) {
    std::cerr << "\r\033[K" << m_stage << " ... " << seconds << " s" << std::flush;
    m_shown = true;
  }
  if (m_shown) std::cerr << "\r\033[K" << std::flush;
}

}  // namespace tool
