#include "qenzor/qen_document.h"
#include "qenzor/read_impl.h"

namespace qenzor {

namespace {

struct QenKind {
  using Document = CQen;
  using Edit = CQenEdit;
  using Info = QenFileInfo;
  using Root = CQenMapData;

  static std::uint32_t RootIdOf(const CQen& map) {
    return map.MapData == nullptr ? Root::kChunkId : map.MapData->GetHeader().ChunkId;
  }
  static void Convert(CQen& map, CQenEdit& edit) { edit.QenDataToEditData(&map); }
};

}  // namespace

Result<CQen> ReadQen(const CString& path, const ReadOptions& options) {
  return ReadPath<QenKind>(path, options);
}

Result<CQen> ReadQen(std::span<const std::uint8_t> bytes, const ReadOptions& options) {
  return ReadBytes<QenKind>(bytes, options);
}

Result<CQen> ReadQen(CFile& file, const ReadOptions& options) {
  return ReadFile<QenKind>(file, options);
}

Result<CQenEdit> ReadQenEdit(const CString& path, const ReadOptions& options) {
  return ToEdit<QenKind>(ReadQen(path, options));
}

Result<CQenEdit> ReadQenEdit(std::span<const std::uint8_t> bytes, const ReadOptions& options) {
  return ToEdit<QenKind>(ReadQen(bytes, options));
}

Result<CQenEdit> ReadQenEdit(CFile& file, const ReadOptions& options) {
  return ToEdit<QenKind>(ReadQen(file, options));
}

}  // namespace qenzor
