#include "round_trip.h"

#include <algorithm>
#include <new>

#include "documents.h"

namespace tool {

std::optional<std::uint64_t> FindRoundTripDifference(const Input& input, BinaryKind kind) {
  return WithKind(kind, [&](auto name) -> std::optional<std::uint64_t> {
    using Kind = decltype(name);
    typename Kind::Document document;
    if (!document.Read(input.Bytes.data(), static_cast<std::uint32_t>(input.Bytes.size())))
      throw std::bad_alloc();  // its bytes are known to be sound
    qenzor::CMemFile xml;
    if (!Kind::ToText(xml, document)) throw std::bad_alloc();
    Input text{"XML", "", false, xml.GetBytes().size(), {}};
    text.Bytes.assign(xml.GetBytes().begin(), xml.GetBytes().end());
    const auto edit = ReadXmlEdit<Kind>(text);
    const std::unique_ptr<typename Kind::Document> back(Kind::TakeDocument(*edit));
    qenzor::CMemFile bytes;
    if (back == nullptr || !back->Write(&bytes)) throw std::bad_alloc();
    const auto [here, there] = std::mismatch(input.Bytes.begin(), input.Bytes.end(),
                                             bytes.GetBytes().begin(), bytes.GetBytes().end());
    if (here == input.Bytes.end() && there == bytes.GetBytes().end()) return std::nullopt;
    return static_cast<std::uint64_t>(here - input.Bytes.begin());
  });
}

}  // namespace tool
