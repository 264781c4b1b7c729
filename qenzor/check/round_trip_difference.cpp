#include <algorithm>
#include <memory>
#include <new>

#include "qenzor/check/round_trip_impl.h"
#include "qenzor/qen_xml.h"
#include "qenzor/zor_xml.h"

namespace qenzor::check {

namespace {

struct QenForms {
  using Document = CQen;
  static auto ToXml(CQen& document, XmlEncoding encoding) { return QenToXml(document, encoding); }
  static auto FromXml(std::string_view xml, const XmlReadOptions& options) {
    return ParseQenXml(xml, options);
  }
  static CQen* Take(CQenEdit& edit) { return edit.TakeQenData(); }
};

struct ZorForms {
  using Document = CZor;
  static auto ToXml(CZor& document, XmlEncoding encoding) { return ZorToXml(document, encoding); }
  static auto FromXml(std::string_view xml, const XmlReadOptions& options) {
    return ParseZorXml(xml, options);
  }
  static CZor* Take(CZorEdit& edit) { return edit.TakeZorData(); }
};

/// Of a document that is known to be sound, only the memory can fail.
template <class T>
void Require(const T& made) {
  if (!made) throw std::bad_alloc();
}

template <class Forms>
std::optional<std::uint64_t> FindDifference(std::span<const std::uint8_t> bytes,
                                            XmlEncoding encoding) {
  auto document = std::make_unique<typename Forms::Document>();
  Require(document->Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())));
  const auto xml = Forms::ToXml(*document, encoding);
  Require(xml);
  document.reset();
  XmlReadOptions options;
  options.Encoding = encoding;
  auto edit = Forms::FromXml(*xml, options);
  Require(edit);
  document.reset(Forms::Take(*edit));
  Require(document);
  CMemFile back;
  Require(document->Write(&back));
  const auto& again = back.GetBytes();
  const auto [here, there] = std::mismatch(bytes.begin(), bytes.end(), again.begin(), again.end());
  if (here == bytes.end() && there == again.end()) return std::nullopt;
  return static_cast<std::uint64_t>(here - bytes.begin());
}

}  // namespace

std::optional<std::uint64_t> FindRoundTripDifference(std::span<const std::uint8_t> bytes,
                                                     BinaryKind kind, XmlEncoding encoding) {
  return kind == BinaryKind::kQen ? FindDifference<QenForms>(bytes, encoding)
                                  : FindDifference<ZorForms>(bytes, encoding);
}

}  // namespace qenzor::check
