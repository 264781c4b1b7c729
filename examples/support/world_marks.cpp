#include "examples/support/world_marks.h"

namespace world {
namespace {

using qenzor::CList;
using qenzor::CMarkDataEdit;
using qenzor::CMarkDataSetEdit;
using qenzor::CMarkElemEdit;
using qenzor::CPoint;

enum class ElemKind : std::int16_t { kLine = 1, kArea = 2 };

constexpr std::int32_t kExtent = 100;  // marks reach from -100 to 100 in x and y
constexpr std::uint32_t kRed = 0xFFC01818;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;
constexpr std::uint32_t kBlue = 0xFF204080;

std::unique_ptr<CMarkElemEdit> MakeElem(ElemKind kind, std::int16_t line_width, std::uint32_t color,
                                        CList<CPoint> points) {
  auto elem = std::make_unique<CMarkElemEdit>();
  elem->ElemKind = static_cast<std::int16_t>(kind);
  elem->LineWidth = line_width;
  elem->Color = color;
  elem->Pt = std::move(points);
  return elem;
}

std::unique_ptr<CMarkDataEdit> MakeMark() {
  auto mark = std::make_unique<CMarkDataEdit>();
  mark->RectMin = {-kExtent, -kExtent};
  mark->RectMax = {kExtent, kExtent};
  return mark;
}

/// A closed ring of eight corners around the origin.
CList<CPoint> Octagon(std::int32_t half_width) {
  const std::int32_t w = half_width;
  const std::int32_t c = half_width * 2 / 5;
  return {{w, -c}, {w, c}, {c, w}, {-c, w}, {-w, c}, {-w, -c}, {-c, -w}, {c, -w}, {w, -c}};
}

/// A red dot in a red ring.
std::unique_ptr<CMarkDataEdit> MakeCapital() {
  auto mark = MakeMark();
  mark->MarkElem.push_back(MakeElem(ElemKind::kArea, 0, kWhite, Octagon(90)));
  mark->MarkElem.push_back(MakeElem(ElemKind::kLine, 12, kRed, Octagon(90)));
  mark->MarkElem.push_back(MakeElem(ElemKind::kArea, 0, kRed, Octagon(50)));
  return mark;
}

/// An aircraft seen from above, its nose to the north.
std::unique_ptr<CMarkDataEdit> MakeAirport() {
  auto mark = MakeMark();
  const CList<CPoint> wings{{0, 25},    {95, -20},  {95, -40}, {0, -10},
                            {-95, -40}, {-95, -20}, {0, 25}};
  const CList<CPoint> tail{{0, -65}, {40, -90}, {-40, -90}, {0, -65}};
  mark->MarkElem.push_back(MakeElem(ElemKind::kArea, 0, kBlue, wings));
  mark->MarkElem.push_back(MakeElem(ElemKind::kArea, 0, kBlue, tail));
  mark->MarkElem.push_back(MakeElem(ElemKind::kLine, 20, kBlue, {{0, 95}, {0, -85}}));
  return mark;
}

}  // namespace

std::unique_ptr<CMarkDataSetEdit> BuildMarks() {
  auto marks = std::make_unique<CMarkDataSetEdit>();
  marks->Append(MakeCapital());  // in the order of Mark
  marks->Append(MakeAirport());
  return marks;
}

}  // namespace world
