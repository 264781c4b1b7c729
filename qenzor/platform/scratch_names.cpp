#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>

#include "qenzor/platform/file_replacement.h"
#include "qenzor/platform/scratch_names_impl.h"

namespace qenzor {

namespace {

enum class State : std::uint64_t { kFree, kIdle, kChanging, kNamed };

/// A state and the process that it is true of: a forked child inherits slots whose files are its
/// parent's, and whose threads it does not have.
constexpr std::uint64_t WordFor(State state, pid_t process) noexcept {
  return static_cast<std::uint64_t>(process) << 2 | static_cast<std::uint64_t>(state);
}

class CSignalBlock {
 public:
  CSignalBlock() noexcept {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &m_before);
  }
  ~CSignalBlock() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
  CSignalBlock(const CSignalBlock&) = delete;
  CSignalBlock& operator=(const CSignalBlock&) = delete;

 private:
  sigset_t m_before{};
};

}  // namespace

struct ScratchSlot {
  std::atomic<std::uint64_t> Word{0};
  std::array<char, PATH_MAX> Name{};
};

namespace {

static_assert(std::atomic<std::uint64_t>::is_always_lock_free, "a signal handler reads them");

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): a handler knows nothing else
constinit std::array<ScratchSlot, 64> g_slots{};
constinit std::atomic<bool> g_ending{false};
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

ScratchSlot* ClaimSlot() noexcept {
  const pid_t process = ::getpid();
  for (ScratchSlot& slot : g_slots) {
    std::uint64_t word = slot.Word;
    const bool is_ours = word >> 2 == static_cast<std::uint64_t>(process);
    if ((word == 0 || !is_ours) &&
        slot.Word.compare_exchange_strong(word, WordFor(State::kIdle, process)))
      return &slot;
  }
  return nullptr;
}

/// No other file of this process, nor of another that writes into the folder, has this name.
CString UniqueName() {
  static constinit std::atomic<std::uint32_t> s_count{0};
  const auto now = std::chrono::system_clock::now().time_since_epoch().count();
  return ".qenzor-" + std::to_string(::getpid()) + '-' + std::to_string(++s_count) + '-' +
         std::to_string(now);
}

}  // namespace

CScratchName::CScratchName(const CString& folder) : m_name(folder + '/' + UniqueName()) {
  if (m_name.size() >= PATH_MAX) return;  // the system will refuse it
  m_slot = ClaimSlot();
  if (m_slot != nullptr) *std::copy(m_name.begin(), m_name.end(), m_slot->Name.begin()) = '\0';
}

CScratchName::~CScratchName() {
  // RemoveScratchFiles may be reading the name.
  if (m_slot != nullptr && !g_ending) m_slot->Word = 0;
}

bool CScratchName::Change(const std::function<bool()>& change) noexcept {
  const CSignalBlock block;
  const auto enter = [this](State state) {
    if (m_slot != nullptr) m_slot->Word = WordFor(state, ::getpid());
  };
  const std::uint64_t before = m_slot == nullptr ? 0 : m_slot->Word.load();
  enter(State::kChanging);
  if (g_ending) {
    if (m_slot != nullptr) m_slot->Word = before;
    errno = ECANCELED;
    return false;
  }
  const bool named = change();
  enter(named ? State::kNamed : State::kIdle);
  return named;
}

void RemoveScratchFiles() noexcept {
  const int error = errno;
  const pid_t process = ::getpid();
  // Whoever has begun a change by now ends it; whoever begins one later sees this.
  g_ending = true;
  for (ScratchSlot& slot : g_slots) {
    while (slot.Word == WordFor(State::kChanging, process)) ::sched_yield();
    if (slot.Word == WordFor(State::kNamed, process)) ::unlink(slot.Name.data());
  }
  errno = error;
}

}  // namespace qenzor
