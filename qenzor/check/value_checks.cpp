#include <algorithm>

#include "qenzor/check/value_checks_impl.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/mesh_segment_set.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "qenzor/qen/z_id_obj.h"
#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/draw_atter.h"
#include "qenzor/zor/draw_atter_set.h"
#include "qenzor/zor/draw_info_set.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/mark_data_set.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"

namespace qenzor::check {

namespace {

using std::to_string;

constexpr std::string_view kIdentEnd = "\r\n\x1A";
constexpr std::uint64_t kMagic = 0x4041;

/// The chunk id of the objects that a draw info of this id draws; 0 for other chunks.
std::uint32_t DrawnBy(std::uint32_t draw_info_id) noexcept {
  switch (draw_info_id) {
    case CLineDrawInfo::kChunkId:
      return CLineObj::kChunkId;
    case CPolySolidBrushDrawInfo::kChunkId:
    case CPolyBmpBrushDrawInfo::kChunkId:
    case CPolyShadowDrawInfo::kChunkId:
      return CPolyObj::kChunkId;
    case CCmbLblDrawInfo::kChunkId:
      return CCmbLblObj::kChunkId;
    case CRasLLDrawInfo::kChunkId:
      return CRasLLObj::kChunkId;
    case CRasMMDrawInfo::kChunkId:
      return CRasMMObj::kChunkId;
    default:
      return 0;
  }
}

bool IsElementOf(const PathNode& node, std::uint32_t set_id) noexcept {
  return node.Parent != nullptr && node.Parent->Id == set_id;
}

}  // namespace

void CFactCollector::Open(const PathNode& node, const ClassSchema& schema,
                          std::uint64_t /*offset*/) {
  // A set that stands again replaces the one before.
  if (schema.Id == CDrawInfoSet::kChunkId) {
    m_facts.DrawInfos.clear();
    m_facts.UsedMarks.clear();
  } else if (schema.Id == CDrawAtterSet::kChunkId) {
    m_facts.UsedDrawInfos.clear();
  } else if (IsElementOf(node, CDrawInfoSet::kChunkId)) {
    m_facts.DrawInfos.push_back(schema.Id);
  } else if (IsElementOf(node, CObjSet::kChunkId)) {
    m_kinds |= 1U << schema.Id;
  }
}

void CFactCollector::Close(const PathNode& node, const ClassSchema& schema, std::uint64_t kept) {
  if (schema.Id == CMarkDataSet::kChunkId) m_facts.Marks = kept;
  if (schema.Id == CZIdObj::kChunkId) {
    m_facts.ZIds.Add(node.Number.value_or(0), m_kinds);
    m_kinds = 0;
  }
}

void CFactCollector::Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
                             std::uint64_t /*offset*/) {
  if (field.Role == Role::kZId && node.Id == CDrawAtter::kChunkId) m_facts.ZIds.Add(value);
  if (field.Role == Role::kDrawInfoIdx) Use(m_facts.UsedDrawInfos, value);
  if (field.Role == Role::kMarkDataIdx) Use(m_facts.UsedMarks, value);
}

void CFactCollector::Use(std::vector<bool>& used, std::uint64_t index) const {
  if (index >= m_most) return;
  if (index >= used.size()) used.resize(index + 1);
  used[index] = true;
}

void CValueChecks::Open(const PathNode& node, const ClassSchema& schema, std::uint64_t offset) {
  m_opened = offset;
  m_bands.clear();
  switch (schema.Id) {
    case CMeshSegmentSet::kChunkId:
      return m_segments.Clear();
    case CMeshSegment::kChunkId:
      return m_layers.Clear();
    case CDrawAtterSet::kChunkId:
      return m_keys.Clear();
    case CDrawAtter::kChunkId:
      m_attribute = offset;
      m_drawn = 0;
      return;
    default:
      break;
  }
  if (IsElementOf(node, CDrawInfoSet::kChunkId))
    CheckUse(Code::kDrawInfoUnused, "no draw attribute names this draw info", m_facts.UsedDrawInfos,
             node, offset);
  if (IsElementOf(node, CMarkDataSet::kChunkId))
    CheckUse(Code::kMarkUnused, "no label's draw info names this mark", m_facts.UsedMarks, node,
             offset);
}

void CValueChecks::Close(const PathNode& node, const ClassSchema& schema, std::uint64_t /*kept*/) {
  if (schema.Id == CDrawAtter::kChunkId) CheckFit(node);
  if (!m_bands.empty()) CheckBands(node);
}

void CValueChecks::Record(const PathNode& /*node*/, const FieldSchema& field,
                          std::uint64_t offset) {
  if (field.Role == Role::kScaleBand) m_bands.push_back({offset});
}

void CValueChecks::Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
                           std::uint64_t offset) {
  switch (field.Role) {
    case Role::kMeshSegmentNo:
      return CheckSegment(node, value, offset);
    case Role::kLayerNo:
      return CheckRepeated(Code::kRepeatedLayer, "layer", m_layers, node, value);
    case Role::kZId:
      return CheckZId(node, value, offset);
    case Role::kDrawInfoIdx:
    case Role::kMarkDataIdx:
      return CheckIndex(node, field, value, offset);
    case Role::kDenomMin:
      if (!m_bands.empty()) m_bands.back().Min = value;
      return;
    case Role::kDenomMax:
      if (!m_bands.empty()) m_bands.back().Max = value;
      return;
    default:
      return CheckInfo(node, field, value, offset);
  }
}

void CValueChecks::CheckInfo(const PathNode& node, const FieldSchema& field, std::uint64_t value,
                             std::uint64_t offset) {
  switch (field.Role) {
    case Role::kMagic:
      if (value != kMagic)
        m_reporter.Report(Code::kMagic, offset, &node, [&] {
          return "Magic is " + to_string(value) + ", not " + to_string(kMagic) + " (0x4041)";
        });
      return;
    case Role::kMajorVer:
    case Role::kMinorVer:
      m_version.at(field.Role == Role::kMajorVer ? 0 : 1) = value;
      return CheckVersion(node, offset);
    case Role::kSegmentNumX:
    case Role::kSegmentNumY:
      m_mesh.at(field.Role == Role::kSegmentNumX ? 0 : 1) = value;
      if (value == 0)
        m_reporter.Report(Code::kMeshEmpty, offset, &node,
                          [&] { return CString(field.Tag) + " is 0: the mesh has no segments"; });
      return;
    default:
      return;
  }
}

/// XML may have the two numbers in either order.
void CValueChecks::CheckVersion(const PathNode& node, std::uint64_t offset) {
  const std::optional<std::uint64_t>& major = m_version[0];
  const std::optional<std::uint64_t>& minor = m_version[1];
  if (!major.has_value() || !minor.has_value() || (*major == 1 && *minor == 0)) return;
  m_reporter.Report(Code::kVersion, offset, &node, [&] {
    return "the version is " + to_string(*major) + '.' + to_string(*minor) + ", not 1.0";
  });
}

void CValueChecks::Rect(const PathNode& node, const FieldSchema& field, const CRect& rect,
                        std::uint64_t offset) {
  if (field.Role != Role::kIncRect || (rect.left < rect.right && rect.top < rect.bottom)) return;
  m_reporter.Report(Code::kRectEmpty, offset, &node, [&] {
    return rect.left >= rect.right
               ? "the west edge of the map's rectangle, " + to_string(rect.left) +
                     ", is not below the east edge, " + to_string(rect.right)
               : "the south edge of the map's rectangle, " + to_string(rect.top) +
                     ", is not below the north edge, " + to_string(rect.bottom);
  });
}

void CValueChecks::Ident(const PathNode& node, std::string_view ident, std::uint64_t offset) {
  const std::string_view name = ident.substr(0, ident.size() - kIdentEnd.size());
  if (!ident.ends_with(kIdentEnd))
    m_reporter.Report(Code::kIdentEnd, offset + name.size(), &node,
                      [] { return "the identification does not end in 0D 0A 1A"; });
  const std::string_view usual = m_reporter.GetKind() == BinaryKind::kQen ? "QENMAP" : "ZORDRW";
  if (name != usual)
    m_reporter.Report(Code::kIdentName, offset, &node, [&] {
      CString shown(name);
      std::ranges::replace_if(
          shown, [](char c) { return c < ' ' || c > '~'; }, '?');
      return "the identification is \"" + shown + "\", usually it is \"" + CString(usual) + '"';
    });
}

void CValueChecks::Text(const PathNode& node, const FieldSchema& field, std::u16string_view text,
                        std::uint64_t offset) {
  const auto& has_image = m_reporter.GetOptions().HasImage;
  if (field.Role != Role::kImageName || !has_image) return;
  const std::size_t folders = text.find_last_of(u"/\\:") + 1;  // npos + 1 is 0
  const CString name = EncodeText(text.substr(folders), TextEncoding::kUtf8);
  if (!name.empty() && name != "." && name != ".." && has_image(name)) return;
  m_reporter.Report(Code::kImageMissing, offset, &node, [&] {
    return name.empty() ? CString(field.Tag) + " names no image"
                        : "the image " + name + " is missing";
  });
}

void CValueChecks::CheckRepeated(Code code, const char* what, Places& places, const PathNode& node,
                                 std::uint64_t number) {
  const std::uint64_t* const earlier = places.Find(number);
  if (earlier == nullptr) {
    places.Set(number, m_opened);
    return;
  }
  if (*earlier == m_opened) return;  // in XML, the number itself stands twice
  m_reporter.Report(code, m_opened, &node, [&] {
    return what + (' ' + to_string(number)) + " stands again; the first one is at " +
           m_reporter.DescribePlace(*earlier);
  });
}

void CValueChecks::CheckSegment(const PathNode& node, std::uint64_t number, std::uint64_t offset) {
  CheckRepeated(Code::kRepeatedSegment, "segment", m_segments, node, number);
  if (!m_mesh[0].has_value() || !m_mesh[1].has_value()) return;
  const std::uint64_t segments = *m_mesh[0] * *m_mesh[1];
  if (segments == 0 || number < segments) return;  // an empty mesh has been reported
  m_reporter.Report(Code::kSegmentOutsideMesh, offset, &node, [&] {
    return "segment " + to_string(number) + " lies beyond the mesh of " + to_string(*m_mesh[0]) +
           " x " + to_string(*m_mesh[1]) + " segments";
  });
}

void CValueChecks::CheckZId(const PathNode& node, std::uint64_t z_id, std::uint64_t offset) {
  const bool is_drawing = node.Id == CDrawAtter::kChunkId;
  if (is_drawing) {
    const std::uint64_t* const earlier = m_keys.Find(z_id);
    if (earlier == nullptr)
      m_keys.Set(z_id, m_opened);
    else if (*earlier != m_opened)
      m_reporter.Report(Code::kRepeatedKey, m_opened, &node, [&] {
        return "z-id " + to_string(z_id) + " stands again and replaces the one at " +
               m_reporter.DescribePlace(*earlier);
      });
  }
  const CheckOptions& options = m_reporter.GetOptions();
  if (options.OtherZIds == nullptr || options.OtherZIds->Has(z_id) || m_asked.Has(z_id)) return;
  m_asked.Add(z_id);
  m_reporter.Report(is_drawing ? Code::kZIdNowhere : Code::kZIdNotDrawn, offset, &node, [&] {
    return "z-id " + to_string(z_id) +
           (is_drawing ? " stands nowhere in " : " has no draw attribute in ") + options.OtherName;
  });
}

void CValueChecks::CheckIndex(const PathNode& node, const FieldSchema& field, std::uint64_t index,
                              std::uint64_t offset) {
  if (!m_facts.IsWhole) return;
  const bool names_mark = field.Role == Role::kMarkDataIdx;
  const std::uint64_t count = names_mark ? m_facts.Marks : m_facts.DrawInfos.size();
  if (index < count) {
    if (!names_mark) m_drawn |= 1U << DrawnBy(m_facts.DrawInfos[index]);
    return;
  }
  m_reporter.Report(names_mark ? Code::kMarkIndex : Code::kDrawInfoIndex, offset, &node, [&] {
    return CString(field.Tag) + ' ' + to_string(index) + " lies outside the set of " +
           to_string(count) + (names_mark ? " marks" : " draw infos");
  });
}

void CValueChecks::CheckUse(Code code, const char* what, const std::vector<bool>& used,
                            const PathNode& node, std::uint64_t offset) {
  const std::uint64_t index = node.Index.value_or(0);
  if (!m_facts.IsWhole || (index < used.size() && used[index])) return;
  m_reporter.Report(code, offset, &node, [what] { return what; });
}

void CValueChecks::CheckFit(const PathNode& node) {
  const CZIdTable* const map = m_reporter.GetOptions().OtherZIds;
  if (map == nullptr || !m_facts.IsWhole || m_drawn == 0) return;
  const std::uint32_t kinds = map->KindsOf(node.Number.value_or(0));
  if (kinds == 0 || (kinds & m_drawn) != 0) return;
  m_reporter.Report(Code::kFitsNothing, m_attribute, &node, [&] {
    CString tags;
    for (std::uint32_t id = 0; id < 32; ++id)
      if ((kinds >> id & 1) != 0) tags += (tags.empty() ? "" : ", ") + CString(FindClass(id)->Tag);
    return "none of the draw infos draws what " + m_reporter.GetOptions().OtherName +
           " has under z-id " + to_string(node.Number.value_or(0)) + ": " + tags;
  });
}

void CValueChecks::CheckBands(const PathNode& node) {
  const auto text = [](const Band& band) {
    return "1:" + to_string(band.Min) + " to 1:" + to_string(band.Max);
  };
  std::vector<Band> bands;
  for (const Band& band : m_bands) {
    if (band.Min <= band.Max)
      bands.push_back(band);
    else
      m_reporter.Report(Code::kBandReversed, band.Offset, &node, [&] {
        return "DenomMin " + to_string(band.Min) + " is above DenomMax " + to_string(band.Max);
      });
  }
  m_bands.clear();
  std::ranges::stable_sort(bands, {}, &Band::Min);
  for (std::size_t i = 1, widest = 0; i < bands.size(); ++i) {
    const Band& band = bands[i];
    const Band& before = bands[widest];
    if (band.Min > before.Max)
      m_reporter.Report(Code::kBandGap, band.Offset, &node, [&] {
        return "nothing holds between 1:" + to_string(before.Max) + " and 1:" + to_string(band.Min);
      });
    else if (band.Min < before.Max)
      m_reporter.Report(Code::kBandOverlap, std::max(band.Offset, before.Offset), &node, [&] {
        return "the range " + text(band) + " overlaps the range " + text(before);
      });
    if (band.Max >= before.Max) widest = i;
  }
}

}  // namespace qenzor::check
