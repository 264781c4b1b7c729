#include "qenzor/read_impl.h"
#include "qenzor/zor_document.h"

namespace qenzor {

namespace {

struct ZorKind {
  using Document = CZor;
  using Edit = CZorEdit;
  using Info = ZorFileInfo;
  using Root = CZorDrawData;

  static std::uint32_t RootIdOf(const CZor& zor) { return zor.DrawData.GetHeader().ChunkId; }
  static void Convert(CZor& zor, CZorEdit& edit) { edit.ZorDataToEditData(&zor); }
};

}  // namespace

Result<CZor> ReadZor(const CString& path, const ReadOptions& options) {
  return ReadPath<ZorKind>(path, options);
}

Result<CZor> ReadZor(std::span<const std::uint8_t> bytes, const ReadOptions& options) {
  return ReadBytes<ZorKind>(bytes, options);
}

Result<CZor> ReadZor(CFile& file, const ReadOptions& options) {
  return ReadFile<ZorKind>(file, options);
}

Result<CZorEdit> ReadZorEdit(const CString& path, const ReadOptions& options) {
  return ToEdit<ZorKind>(ReadZor(path, options));
}

Result<CZorEdit> ReadZorEdit(std::span<const std::uint8_t> bytes, const ReadOptions& options) {
  return ToEdit<ZorKind>(ReadZor(bytes, options));
}

Result<CZorEdit> ReadZorEdit(CFile& file, const ReadOptions& options) {
  return ToEdit<ZorKind>(ReadZor(file, options));
}

}  // namespace qenzor
