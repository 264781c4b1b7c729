#pragma once

#include "qenzor/core/fields.h"
#include "qenzor/core/forms.h"
#include "qenzor/platform/export.h"
#include "qenzor/platform/file.h"

namespace qenzor {

class CMarkElemEdit;

/// Bytes: ElemKind (i16), LineWidth (i16), Color (u32), point count (u16), points (x and y, i16
/// each); 10 + 4 * count bytes.
template <class Form>
struct QENZOR_EXPORT MarkElemFields {
  /// Kept, not interpreted.
  std::int16_t ElemKind = 0;
  /// Its unit is not interpreted.
  std::int16_t LineWidth = 0;
  /// 0xAARRGGBB.
  std::uint32_t Color = 0;
  /// In the mark's own coordinate space.
  typename Form::template Array<CPoint> Pt;

  static constexpr auto Fields() {
    using D = MarkElemFields;
    return std::tuple{field("ElemKind", &D::ElemKind), field("LineWidth", &D::LineWidth),
                      color("Color", &D::Color), array("Pt", &D::Pt)};
  }
};

/// One element of a mark: a polyline or polygon with its width and colour. A record of the mark's
/// own bytes, not a chunk.
class QENZOR_EXPORT CMarkElem : public MarkElemFields<ChunkForm> {
 public:
  using EditClass = CMarkElemEdit;

  /// Reads from the file's position; false when its bytes do not come.
  [[nodiscard]] bool Read(CFile* file);
  /// Reads from a block of size bytes; consumed is how many were taken. False when there are too
  /// few.
  [[nodiscard]] bool Read(const void* data, const std::uint32_t& size, std::uint32_t& consumed);
  /// False when the file refuses the bytes.
  [[nodiscard]] bool Write(CFile* file) const;
  std::uint32_t GetWriteDataSize() const;
  void DeepCopy(const CMarkElem& source);
};

/// Whether two records hold the same.
QENZOR_EXPORT bool operator==(const CMarkElem& a, const CMarkElem& b);

/// The editable form of a mark element.
class QENZOR_EXPORT CMarkElemEdit : public MarkElemFields<EditForm> {
 public:
  CMarkElemEdit();
  virtual ~CMarkElemEdit();
  CMarkElemEdit(const CMarkElemEdit&) = delete;
  CMarkElemEdit& operator=(const CMarkElemEdit&) = delete;

  /// Replaces the content with a copy of the source's.
  virtual void DeepCopy(const CMarkElemEdit* source);
  /// A new object with a copy of everything, owned by the caller.
  [[nodiscard]] virtual CMarkElemEdit* Clone() const;

  /// Fills this object from a record.
  void MarkElemToEditData(const CMarkElem& elem);
  /// Fills a record from this object; of more points than 65,535 as many as the count tells.
  void EditDataToMarkElem(CMarkElem& elem) const;
  /// Empties the point list.
  void Release();
};

QENZOR_EXPORT bool operator==(const CMarkElemEdit& a, const CMarkElemEdit& b);

}  // namespace qenzor
