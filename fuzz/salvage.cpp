// Damaged documents are salvaged: what is left has no errors, and stays as it is from then on.

#include "qenzor/check/salvage.h"

#include <vector>

#include "support/chunk_hooks.h"
#include "support/require.h"

namespace {

class CDeafSink : public qenzor::CFindingSink {
 public:
  bool Take(const qenzor::Finding& /*finding*/) override { return true; }
};

std::uint64_t ErrorsIn(const std::vector<std::uint8_t>& bytes, qenzor::BinaryKind kind) {
  CDeafSink nobody;
  return qenzor::CheckBinary(bytes, kind, {}, nobody).Of(qenzor::Severity::kError);
}

void Salvage(const std::uint8_t* data, std::size_t size, qenzor::BinaryKind kind) {
  // A block of the exact size, so that a byte too far is seen.
  const std::vector<std::uint8_t> bytes(data, data + size);
  const auto describe = [](const qenzor::Loss& loss) {
    fuzz::Require(!loss.Reason.empty() && !qenzor::RenderPath(loss.Path).empty());
  };
  const auto salvaged = qenzor::SalvageBinary(bytes, kind, describe);
  if (!salvaged) return;
  fuzz::Require(ErrorsIn(salvaged->Bytes, kind) == 0);
  fuzz::Require((salvaged->Losses == 0) == (ErrorsIn(bytes, kind) == 0));
  fuzz::Require((salvaged->Losses == 0) == (salvaged->Bytes == bytes));
  const auto again = qenzor::SalvageBinary(salvaged->Bytes, kind, describe);
  fuzz::Require(again && again->Losses == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Salvage(data, size, qenzor::BinaryKind::kQen);
  Salvage(data, size, qenzor::BinaryKind::kZor);
  return 0;
}
