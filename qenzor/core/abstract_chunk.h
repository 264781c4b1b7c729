#pragma once

#include <cstdint>

#include "qenzor/core/chunk_header.h"
#include "qenzor/platform/file.h"
#include "qenzor/platform/object.h"

namespace qenzor {

class CAbstractChunkEdit;

/// Chunks nest this deep at most in what is read, the outermost counted as 1. No map needs a tenth
/// of it; the bound keeps a hostile file from using up the stack.
inline constexpr std::uint32_t kMaxChunkDepth = 256;

/// A binary chunk: an 8-byte header, the class's own fields (the primitive block), then whole
/// sub-chunks that fill the data size exactly. A chunk owns its sub-chunks; deleting it deletes
/// them. Operations tell failure by a false result or null. After a failed read the object keeps
/// what it had taken by then, and is good for nothing but destruction or another read.
/// The data size held is the one read or last recalculated; changes to the tree do not update it.
class QENZOR_EXPORT CAbstractChunk : public CObject {
 public:
  /// Each chunk class names its editable twin.
  using EditClass = CAbstractChunkEdit;
  static const CRuntimeClass kRuntimeClass;

  CAbstractChunk();
  const CRuntimeClass& GetRuntimeClass() const override;

  /// Reads a whole chunk, header and data, from a block of size bytes; more bytes than the chunk
  /// takes are fine.
  [[nodiscard]] virtual bool Read(const void* data, const std::uint32_t& size);
  /// Reads a whole chunk from the file's position on.
  [[nodiscard]] virtual bool Read(CFile* file);
  /// Reads the data area whose header the object already holds. Size is the number of bytes
  /// available, which may be more than the data size.
  [[nodiscard]] virtual bool ReadData(const void* data, const std::uint32_t& size);
  [[nodiscard]] virtual bool ReadData(CFile* file);
  /// Writes header and data. With recalc the data sizes of the whole tree are made right first;
  /// without, they are written as they stand.
  [[nodiscard]] virtual bool Write(CFile* file, bool recalc);
  /// A new chunk of the same class with copies of everything below it; the caller owns it. Null
  /// when memory runs out.
  [[nodiscard]] virtual CAbstractChunk* Clone() = 0;
  /// Releases this chunk, then takes copies of the source's header, fields and sub-chunks if the
  /// source is of the same class. The source is only read. Throws std::bad_alloc when memory runs
  /// out; the chunk then holds a part of them and may be copied into again.
  virtual void DeepCopy(CAbstractChunk* source) = 0;
  /// Takes ownership of a sub-chunk: keeps it where its class has a place here, else deletes it.
  virtual void SubChunkSet(std::uint32_t index, CAbstractChunk* chunk);
  /// Sets the data size of this chunk and all below to what writing will produce.
  virtual void RecursiveReCalcDataSize() = 0;

 protected:
  /// Reads the class's own fields; consumed is the number of bytes taken.
  virtual bool ReadPrimitiveBlock(const void* data, const std::uint32_t& size,
                                  std::uint32_t& consumed) = 0;
  virtual bool ReadPrimitiveBlock(CFile* file, std::uint32_t& consumed) = 0;
  /// Reads sub-chunks until they add up to needed bytes and gives each to SubChunkSet.
  virtual bool ReadChunkBlock(const void* data, const std::uint32_t& available,
                              const std::uint32_t& needed);
  virtual bool ReadChunkBlock(CFile* file, std::uint32_t needed);
  /// Deletes every sub-chunk and empties every array; plain fields stay.
  virtual void Release() = 0;
  /// Writes the fields and sub-chunks; false when the file refuses them.
  virtual bool WriteData(CFile* file, bool recalc) = 0;

 public:
  /// Bytes of the whole chunk: data size + 8.
  std::uint32_t GetChunkSize() const noexcept { return m_header.DataSize + CChunkHeader::kSize; }
  const CChunkHeader& GetHeader() const noexcept { return m_header; }
  void SetHeader(const CChunkHeader& header) noexcept { m_header = header; }

 protected:
  CChunkHeader m_header;
};

/// Whether two chunks are of the same class and hold the same fields and sub-chunks. Headers are
/// not compared, except for the ids of unknown chunks, which hold nothing else.
QENZOR_EXPORT bool operator==(const CAbstractChunk& a, const CAbstractChunk& b);

}  // namespace qenzor
