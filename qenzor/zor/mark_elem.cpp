#include "qenzor/zor/mark_elem.h"

#include "qenzor/core/equal_impl.h"
#include "qenzor/edit/field_edit_impl.h"

namespace qenzor {

bool CMarkElem::Read(CFile* file) {
  CFileSource source(*file);
  return ReadFields(source, Fields(), *this);
}

bool CMarkElem::Read(const void* data, const std::uint32_t& size, std::uint32_t& consumed) {
  CMemSource source(data, size);
  if (!ReadFields(source, Fields(), *this)) return false;
  consumed = source.GetConsumed();
  return true;
}

bool CMarkElem::Write(CFile* file) const try {
  WriteFields(*file, Fields(), *this);
  return true;
} catch (const std::exception&) {
  return false;
}

std::uint32_t CMarkElem::GetWriteDataSize() const { return SizeOfFields(Fields(), *this); }

void CMarkElem::DeepCopy(const CMarkElem& source) {
  if (this != &source) CopyFields(Fields(), source, *this);
}

bool operator==(const CMarkElem& a, const CMarkElem& b) {
  return EqualFields(CMarkElem::Fields(), a, b);
}

CMarkElemEdit::CMarkElemEdit() = default;
CMarkElemEdit::~CMarkElemEdit() = default;

void CMarkElemEdit::DeepCopy(const CMarkElemEdit* source) {
  if (this != source) CopyEditFields(Fields(), *source, *this);
}

CMarkElemEdit* CMarkElemEdit::Clone() const {
  auto clone = std::make_unique<CMarkElemEdit>();
  clone->DeepCopy(this);
  return clone.release();
}

void CMarkElemEdit::MarkElemToEditData(const CMarkElem& elem) {
  ConvertToEdit(CMarkElem::Fields(), elem, Fields(), *this);
}

void CMarkElemEdit::EditDataToMarkElem(CMarkElem& elem) const {
  ConvertToChunk(Fields(), *this, CMarkElem::Fields(), elem);
}

bool operator==(const CMarkElemEdit& a, const CMarkElemEdit& b) {
  return EqualFields(CMarkElemEdit::Fields(), a, b);
}

void CMarkElemEdit::Release() { ReleaseFields(Fields(), *this); }

}  // namespace qenzor
