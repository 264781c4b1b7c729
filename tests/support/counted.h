#pragma once

#include <utility>

namespace qenzor::testing {

/// A chunk or edit class whose living objects are counted, so that a test sees one being destroyed.
template <class Base>
class Counted : public Base {
 public:
  template <class... Args>
  explicit Counted(Args&&... args) : Base(std::forward<Args>(args)...) {
    ++s_alive;
  }
  ~Counted() override { --s_alive; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  static int Alive() { return s_alive; }

 private:
  inline static int s_alive = 0;
};

}  // namespace qenzor::testing
