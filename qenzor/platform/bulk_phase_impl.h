#pragma once

namespace qenzor {

/// While one lives on a thread, what that thread makes for documents is cut from slabs: it is made
/// in one go and mostly dies together. Stands in the functions that read, copy or convert a
/// document as a whole. One inside another does nothing.
class CBulkPhase {
 public:
  CBulkPhase() noexcept;
  ~CBulkPhase();
  CBulkPhase(const CBulkPhase&) = delete;
  CBulkPhase& operator=(const CBulkPhase&) = delete;

 private:
  bool m_outermost;
};

}  // namespace qenzor
