#include "qenzor/view/geojson.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <span>
#include <vector>

#include "qenzor/platform/code_page.h"
#include "qenzor/qen/ras_ll_obj.h"

namespace qenzor {

namespace {

constexpr int kPlaceDecimals = 9;

void AppendPosition(std::string& out, const CSegmentFrame& frame, const CPoint& point) {
  const MapPoint at = frame.At(point);
  out += '[';
  AppendJsonNumber(out, at.x, kPlaceDecimals);
  out += ',';
  AppendJsonNumber(out, at.y, kPlaceDecimals);
  out += ']';
}

template <class Points>
void AppendPositions(std::string& out, const CSegmentFrame& frame, const Points& points) {
  out += '[';
  for (const CPoint& point : points) {
    AppendPosition(out, frame, point);
    out += ',';
  }
  out.back() = ']';
}

bool HasThreePlaces(std::span<const CPoint> points) {
  std::array<CPoint, 2> seen{};
  std::size_t count = 0;
  for (const CPoint& point : points) {
    if (std::find(seen.begin(), seen.begin() + static_cast<std::ptrdiff_t>(count), point) !=
        seen.begin() + static_cast<std::ptrdiff_t>(count))
      continue;
    if (count == seen.size()) return true;
    seen[count++] = point;
  }
  return false;
}

/// Above 0 for a ring that turns counter-clockwise, y to the north.
std::int64_t SignedArea(std::span<const CPoint> ring) {
  std::int64_t area = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const CPoint& a = ring[i];
    const CPoint& b = ring[(i + 1) % ring.size()];
    area += std::int64_t{a.x} * b.y - std::int64_t{b.x} * a.y;
  }
  return area;
}

void AppendPolygon(std::string& out, const CSegmentFrame& frame, std::span<const CPoint> points) {
  std::vector<CPoint> ring(points.begin(), points.end());
  if (ring.front() != ring.back()) ring.push_back(ring.front());
  if (SignedArea(ring) < 0) std::reverse(ring.begin(), ring.end());
  out += R"({"type":"Polygon","coordinates":[)";
  AppendPositions(out, frame, ring);
  out += "]}";
}

}  // namespace

void AppendJsonNumber(std::string& out, double value, int decimals) {
  constexpr std::size_t kLongest = 330;
  std::array<char, kLongest> text;
  const char* end = std::to_chars(text.data(), text.data() + text.size(), value,
                                  std::chars_format::fixed, decimals)
                        .ptr;
  std::string_view shown(text.data(), static_cast<std::size_t>(end - text.data()));
  if (decimals > 0) {
    shown.remove_suffix(shown.size() - 1 - shown.find_last_not_of('0'));
    if (shown.ends_with('.')) shown.remove_suffix(1);
  }
  out += shown == "-0" ? "0" : shown;
}

void AppendJsonText(std::string& out, std::u16string_view text) {
  AppendJsonText(out, std::string_view(EncodeText(text, TextEncoding::kUtf8)));
}

void AppendJsonText(std::string& out, std::string_view utf8) {
  constexpr std::string_view kHexDigits = "0123456789abcdef";
  constexpr std::string_view kShort = "\"\\\b\f\n\r\t";
  constexpr std::string_view kShortNames = "\"\\bfnrt";
  out += '"';
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    if (const std::size_t at = kShort.find(c); at != std::string_view::npos) {
      out += '\\';
      out += kShortNames[at];
    } else if (byte < ' ') {
      out += "\\u00";
      out += kHexDigits[byte >> 4U];
      out += kHexDigits[byte & 15U];
    } else {
      out += c;
    }
  }
  out += '"';
}

void AppendGeometry(std::string& out, const ObjectAt& at, const CSegmentFrame& frame) {
  const std::span<const CPoint> points = PointsOf(at.Kind, *at.Object);
  if (at.Kind == ObjectKind::kRasterRect) {
    const CRect& rect = at.As<CRasLLObj>().Rect;
    const std::array corners{CPoint{rect.left, rect.top}, CPoint{rect.right, rect.top},
                             CPoint{rect.right, rect.bottom}, CPoint{rect.left, rect.bottom}};
    if (HasThreePlaces(corners))
      AppendPolygon(out, frame, corners);
    else
      out += "null";
  } else if (at.Kind == ObjectKind::kLine && points.size() >= 2) {
    out += R"({"type":"LineString","coordinates":)";
    AppendPositions(out, frame, points);
    out += '}';
  } else if (at.Kind == ObjectKind::kPolygon && HasThreePlaces(points)) {
    AppendPolygon(out, frame, points);
  } else if (at.Kind == ObjectKind::kLabel || at.Kind == ObjectKind::kRasterPoint) {
    out += R"({"type":"Point","coordinates":)";
    AppendPosition(out, frame, points[0]);
    out += '}';
  } else {
    out += "null";
  }
}

}  // namespace qenzor
