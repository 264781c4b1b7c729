// A map and a drawing that need not belong together: what would be drawn, and drawing it into a
// picture that nobody keeps.

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "qenzor/draw/list_json.h"
#include "qenzor/draw/render.h"
#include "support/chunk_hooks.h"
#include "support/require.h"

namespace {

constexpr std::size_t kFront = 8;  // scale, flags, the size of the map

/// A picture that holds nothing.
class CNothing : public qenzor::CFile {
 public:
  void Write(const void* /*data*/, std::uint32_t /*size*/) override {}
};

template <class Document>
bool Read(Document& document, const std::uint8_t* data, std::size_t size) {
  // A block of the exact size, so that a byte too far is seen.
  const std::vector<std::uint8_t> bytes(data, data + size);
  return document.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

/// Whatever the documents hold, a backend gets numbers that it can count on.
void RequireBounds(const qenzor::DrawOp& op) {
  const auto is_size = [](double value) { return value >= 0 && value <= 4096; };
  const auto is_offset = [](double value) { return std::abs(value) <= 4096; };
  const auto is_place = [](const qenzor::MapPoint& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
  };
  const auto require = [&](const auto& what) {
    using Op = std::decay_t<decltype(what)>;
    if constexpr (requires { what.Points; })
      for (const qenzor::MapPoint& point : what.Points) fuzz::Require(is_place(point));
    if constexpr (requires { what.At; }) fuzz::Require(is_place(what.At));
    if constexpr (requires { what.Width; }) fuzz::Require(is_size(what.Width));
    if constexpr (requires { what.Size; }) fuzz::Require(is_size(what.Size));
    if constexpr (requires { what.OffsetX; })
      fuzz::Require(is_offset(what.OffsetX) && is_offset(what.OffsetY));
    if constexpr (std::is_same_v<Op, qenzor::StrokeOp>)
      fuzz::Require(what.Aspect > 0 && std::isfinite(what.Aspect) && what.Code <= 4);
    if constexpr (std::is_same_v<Op, qenzor::TextOp>)
      fuzz::Require(what.Angle >= 0 && what.Angle < 360 && what.Anchor >= 1 && what.Anchor <= 9);
  };
  std::visit(require, op);
}

void Draw(const qenzor::CQen& map, const qenzor::CZor* drawing, unsigned scale, unsigned flags) {
  const qenzor::WarningSink warn = [](const std::string& what) { fuzz::Require(!what.empty()); };
  qenzor::PictureContent content;
  content.Map = &map;
  content.Drawing = drawing;
  content.DefaultStyle = (flags & 1U) != 0;
  content.Frame.Plain = (flags & 2U) != 0;
  content.Page.How = (flags & 4U) != 0 ? qenzor::Projection::kMercator : qenzor::Projection::kFlat;
  content.Page.Size = {64, 48};
  if ((flags & 8U) != 0) {
    content.Page.Size.reset();
    content.Page.Denominator = std::exp2(scale / 8.0);
  }
  const auto plan = qenzor::CPicture::Plan(content, warn);
  if (!plan) return fuzz::Require(!plan.GetFailure().Reason.empty());
  std::string line;
  plan->GetList().ForEach([&](const qenzor::DrawOrigin& origin, const qenzor::DrawOp& op) {
    line.clear();
    qenzor::AppendJsonLine(line, origin, op);
    fuzz::Require(line.ends_with("}\n"));
    RequireBounds(op);
  });
  if (!plan->GetPage().CheckSize() || plan->GetPage().GetPixelWidth() > 256 ||
      plan->GetPage().GetPixelHeight() > 256)
    return;
  qenzor::RenderOptions options;
  options.AllLabels = (flags & 16U) != 0;
  CNothing file;
  const auto format =
      (flags & 32U) != 0 ? qenzor::PictureFormat::kSvg : qenzor::PictureFormat::kPng;
  static_cast<void>(qenzor::RenderPicture(*plan, format, options, file, warn));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < kFront) return 0;
  std::uint32_t length = 0;
  std::memcpy(&length, data + 4, sizeof(length));
  const std::size_t rest = size - kFront;
  if (length > rest) return 0;
  qenzor::CQen map;
  qenzor::CZor drawing;
  if (!Read(map, data + kFront, length)) return 0;
  const bool has_drawing = Read(drawing, data + kFront + length, rest - length);
  Draw(map, has_drawing ? &drawing : nullptr, data[0], data[1]);
  return 0;
}
