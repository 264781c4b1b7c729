#include "qenzor/view/frame.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <memory>

#include "qenzor/view/words_impl.h"

namespace qenzor {

namespace {

constexpr double kUnitsPerDegree = 3600000;
constexpr std::uint8_t kGeographicCode = 1;

std::optional<double> ParsePositive(std::string_view text) {
  const auto number = ParseWhole<double>(text);
  return number.has_value() && *number > 0 ? number : std::nullopt;
}

std::optional<double> ParseFraction(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return ParsePositive(text);
  const auto above = ParsePositive(text.substr(0, slash));
  const auto below = ParsePositive(text.substr(slash + 1));
  if (!above.has_value() || !below.has_value()) return std::nullopt;
  const double value = *above / *below;
  return value > 0 && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

/// Which of two words it is: the first is true.
std::optional<bool> ParseChoice(std::string_view text, std::string_view yes, std::string_view no) {
  if (text == yes) return true;
  if (text == no) return false;
  return std::nullopt;
}

template <class T>
bool Assign(T& option, const std::optional<bool>& value) {
  option = value.value_or(option);
  return value.has_value();
}
bool Assign(std::optional<double>& option, const std::optional<double>& value) {
  option = value;
  return value.has_value();
}

/// A name of the form AUTHORITY:CODE, or none.
bool IsCrsName(std::string_view text) {
  const auto is_plain = [](unsigned char c) {
    return std::isalnum(c) != 0 || c == '_' || c == '.';
  };
  const std::size_t colon = text.find(':');
  return text == "none" ||
         (colon != std::string_view::npos && colon > 0 && colon + 1 < text.size() &&
          std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon), is_plain) &&
          std::all_of(text.begin() + static_cast<std::ptrdiff_t>(colon) + 1, text.end(), is_plain));
}

bool SetOption(FrameOptions& options, std::string_view key, std::string_view value) {
  if (key == "unit") return Assign(options.Unit, ParseFraction(value));
  if (key == "origin")
    return Assign(options.FromCentre, ParseChoice(value, "centre", "south-west"));
  if (key == "rows") return Assign(options.RowsNorth, ParseChoice(value, "north", "south"));
  if (key == "coef") return Assign(options.Coef, ParsePositive(value));
  if (key == "plain") return Assign(options.Plain, ParseChoice(value, "on", "off"));
  options.Crs = CString(value);
  return IsCrsName(value);
}

}  // namespace

const std::array<FrameKey, 6> kFrameKeys{{
    {"unit", "a decimal number or a fraction a/b above 0", "degrees per unit of IncRect"},
    {"origin", "centre or south-west", "what coordinates are relative to in their segment"},
    {"rows", "north or south", "where rows of segments run"},
    {"coef", "a decimal number above 0", "units of IncRect per unit of a coordinate"},
    {"crs", "a name as EPSG:4326, or none", "coordinate reference system of the result"},
    {"plain", "on or off", "coordinates as they stand, without a frame"},
}};

void MapBox::Add(const MapBox& other) {
  West = std::min(West, other.West);
  South = std::min(South, other.South);
  East = std::max(East, other.East);
  North = std::max(North, other.North);
}

Result<FrameOptions> FrameOptions::Parse(std::string_view words) {
  auto options = std::make_unique<FrameOptions>();
  std::string reason;
  std::array<bool, kFrameKeys.size()> given{};
  ForEachWord(words, ',', [&](std::string_view word) {
    const std::size_t equals = std::min(word.find('='), word.size());
    const auto* const key =
        std::find_if(kFrameKeys.begin(), kFrameKeys.end(),
                     [&](const FrameKey& k) { return k.Name == word.substr(0, equals); });
    if (equals == word.size() || key == kFrameKeys.end()) {
      reason = "the frame knows no " + Quoted(word) + ", only key=value with the keys";
      for (const FrameKey& known : kFrameKeys) reason += ' ' + std::string(known.Name);
      return false;
    }
    const std::string name(key->Name);
    bool& seen = given[static_cast<std::size_t>(key - kFrameKeys.begin())];
    if (seen)
      reason = "the frame's " + name + " is given twice";
    else if (!SetOption(*options, name, word.substr(equals + 1)))
      reason = "the frame's " + name + " is " + std::string(key->Values) + ", not " +
               Quoted(word.substr(equals + 1));
    seen = true;
    return reason.empty();
  });
  if (!reason.empty()) return WrongUsage(std::move(reason));
  return options;
}

CFrame::CFrame(const QenFileInfo& info, const FrameOptions& options)
    : m_rect(info.IncRect),
      m_columns(info.SegmentNumX),
      m_rows(info.SegmentNumY),
      m_half(options.FromCentre ? 1 : 0),
      m_rows_north(options.RowsNorth),
      m_plain(options.Plain) {
  const bool has_mesh =
      m_columns > 0 && m_rows > 0 && m_rect.left < m_rect.right && m_rect.top < m_rect.bottom;
  m_degenerate = !m_plain && !has_mesh;
  m_plain = m_plain || m_degenerate;
  if (m_plain) {
    m_rect = {};
    return;
  }
  m_coef = options.Coef.value_or(info.CompCoef == 0 ? 1 : info.CompCoef);
  if (options.Unit.has_value())
    m_factor = *options.Unit;
  else
    m_divisor = kUnitsPerDegree;
  if (options.Crs.has_value())
    m_crs = *options.Crs == "none" ? CString() : *options.Crs;
  else if (info.GeoCoodinate == kGeographicCode)
    m_crs = kGeographicCrs;
}

// The differences and products are whole numbers below 2^53, exact in 64 bits and as doubles; the
// one division is the only step that rounds.

double CFrame::ColumnOrigin(std::int64_t column, std::int64_t halves) const {
  const std::int64_t span = static_cast<std::int64_t>(m_rect.right) - m_rect.left;
  return m_rect.left +
         static_cast<double>(span * (2 * column + halves)) / static_cast<double>(2 * m_columns);
}

double CFrame::RowOrigin(std::int64_t row, std::int64_t halves) const {
  const std::int64_t span = static_cast<std::int64_t>(m_rect.bottom) - m_rect.top;
  const auto rows = static_cast<double>(2 * m_rows);
  if (m_rows_north) return m_rect.top + static_cast<double>(span * (2 * row + halves)) / rows;
  return m_rect.bottom - static_cast<double>(span * (2 * row + 2 - halves)) / rows;
}

MapBox CFrame::GetRect() const {
  return {ToFrame(m_rect.left), ToFrame(m_rect.top), ToFrame(m_rect.right), ToFrame(m_rect.bottom)};
}

bool CFrame::HasSegment(std::uint16_t segment) const {
  return m_plain || segment < m_columns * m_rows;
}

CSegmentFrame CFrame::ForSegment(std::uint16_t segment) const {
  CSegmentFrame frame;
  if (m_plain) return frame;
  frame.m_x = ColumnOrigin(segment % m_columns, m_half);
  frame.m_y = RowOrigin(segment / m_columns, m_half);
  frame.m_coef = m_coef;
  frame.m_divisor = m_divisor;
  frame.m_factor = m_factor;
  return frame;
}

MapBox CFrame::GetCell(std::uint16_t segment) const {
  if (m_plain) return {};
  const std::int64_t column = segment % m_columns;
  const std::int64_t row = segment / m_columns;
  return {ToFrame(ColumnOrigin(column, 0)), ToFrame(RowOrigin(row, 0)),
          ToFrame(ColumnOrigin(column, 2)), ToFrame(RowOrigin(row, 2))};
}

std::optional<std::uint16_t> CFrame::FindSegment(const MapPoint& point) const {
  if (m_plain) return 0;
  if (!GetRect().Holds(point)) return std::nullopt;
  // The last of `count` cells whose lower edge the place does not lie before. Edges are compared as
  // the frame gives them, so that what lies on one is found on it.
  const auto find = [](std::int64_t count, double place, auto&& edge) {
    std::int64_t low = 0;
    for (std::int64_t high = count; high - low > 1;) {
      const std::int64_t middle = low + (high - low) / 2;
      (edge(middle) <= place ? low : high) = middle;
    }
    return low;
  };
  const std::int64_t column =
      find(m_columns, point.x, [&](std::int64_t c) { return ToFrame(ColumnOrigin(c, 0)); });
  const auto row_of = [&](std::int64_t from_south) {
    return m_rows_north ? from_south : m_rows - 1 - from_south;
  };
  const std::int64_t row = row_of(
      find(m_rows, point.y, [&](std::int64_t r) { return ToFrame(RowOrigin(row_of(r), 0)); }));
  const std::int64_t segment = row * m_columns + column;
  if (segment > std::numeric_limits<std::uint16_t>::max()) return std::nullopt;
  return static_cast<std::uint16_t>(segment);
}

std::optional<CPoint> CFrame::ToSegment(std::uint16_t segment, const MapPoint& point) const {
  const CSegmentFrame frame = ForSegment(segment);
  const auto back = [&](double place, double origin) {
    return std::round((place * m_divisor / m_factor - origin) / m_coef);
  };
  const double x = back(point.x, frame.m_x);
  const double y = back(point.y, frame.m_y);
  const auto fits = [](double value) {
    return value >= std::numeric_limits<std::int16_t>::min() &&
           value <= std::numeric_limits<std::int16_t>::max();
  };
  if (!fits(x) || !fits(y)) return std::nullopt;
  return CPoint{static_cast<std::int32_t>(x), static_cast<std::int32_t>(y)};
}

void CFrame::Warn(const CQen& map, const WarningSink& warn) const {
  if (m_degenerate)
    warn(
        "the file info gives no mesh of segments (IncRect, SegmentNumX, SegmentNumY): coordinates "
        "are taken as they stand");
  if (map.MapData == nullptr || map.MapData->MeshSegmentSet == nullptr) return;
  const CMeshSegmentSet& segments = *map.MapData->MeshSegmentSet;
  std::uint32_t outside = 0;
  std::uint16_t first = 0;
  for (std::uint32_t i = 0; i < segments.GetElemCount(); ++i) {
    const std::uint16_t number = segments.GetElem(i)->MeshSegmentNo;
    if (!HasSegment(number) && outside++ == 0) first = number;
  }
  if (outside > 0)
    warn("the mesh has " + std::to_string(m_columns * m_rows) + " segments; " +
         std::to_string(outside) + " lie outside it, the first is number " + std::to_string(first));
}

}  // namespace qenzor
