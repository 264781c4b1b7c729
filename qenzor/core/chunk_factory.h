#pragma once

#include <cstdint>
#include <span>

#include "qenzor/core/abstract_chunk.h"

namespace qenzor {

/// Makes chunks from chunk ids. The caller owns every chunk returned; null is failure, and leaves
/// nothing behind.
class QENZOR_EXPORT CChunkFactory {
 public:
  using Creator = CAbstractChunk* (*)();
  /// The creators by chunk id, null where no class has the id: such a chunk is unknown, as is one
  /// whose id lies beyond.
  static const std::span<const Creator> kCreatorsById;

  CChunkFactory();
  virtual ~CChunkFactory();

  /// Reads one whole chunk from the file's position on.
  [[nodiscard]] static CAbstractChunk* Create(CFile* file);
  /// Reads one whole chunk from the front of a block of size bytes.
  [[nodiscard]] static CAbstractChunk* Create(const void* data, const std::uint32_t& size);
  /// Makes the empty chunk that the header's id names and gives it that header; reads nothing.
  [[nodiscard]] static CAbstractChunk* CreateInstance(const CChunkHeader& header);

  // One creator for each class: a new empty chunk with its class's id and data size 0.
  [[nodiscard]] static CAbstractChunk* CreateUnKnownChunkInst();
  [[nodiscard]] static CAbstractChunk* CreateAddedObjInfoSetInst();
  [[nodiscard]] static CAbstractChunk* CreateDrawAtterSetInst();
  [[nodiscard]] static CAbstractChunk* CreateDrawAtterInst();
  [[nodiscard]] static CAbstractChunk* CreateCmbLblDrawInfoInst();
  [[nodiscard]] static CAbstractChunk* CreateCmbLblObjInst();
  [[nodiscard]] static CAbstractChunk* CreateDrawInfoSetInst();
  [[nodiscard]] static CAbstractChunk* CreateLayerDataInst();
  [[nodiscard]] static CAbstractChunk* CreateLayerSetInst();
  [[nodiscard]] static CAbstractChunk* CreateLineObjInst();
  [[nodiscard]] static CAbstractChunk* CreateLineDrawInfoInst();
  [[nodiscard]] static CAbstractChunk* CreateMarkDataInst();
  [[nodiscard]] static CAbstractChunk* CreatePolySolidBrushDrawInfoInst();
  [[nodiscard]] static CAbstractChunk* CreatePolyObjInst();
  [[nodiscard]] static CAbstractChunk* CreatePolyShadowDrawInfoInst();
  [[nodiscard]] static CAbstractChunk* CreateRasLLDrawInfoInst();
  [[nodiscard]] static CAbstractChunk* CreateRasLLObjInst();
  [[nodiscard]] static CAbstractChunk* CreateRasMMDrawInfoInst();
  [[nodiscard]] static CAbstractChunk* CreateRasMMObjInst();
  [[nodiscard]] static CAbstractChunk* CreateUrlInfoInst();
  [[nodiscard]] static CAbstractChunk* CreateZIdObjSetInst();
  [[nodiscard]] static CAbstractChunk* CreateZIdObjInst();
  [[nodiscard]] static CAbstractChunk* CreateObjSetInst();
  [[nodiscard]] static CAbstractChunk* CreateDrawInfoIdxSetInst();
  [[nodiscard]] static CAbstractChunk* CreateMarkDataSetInst();
  [[nodiscard]] static CAbstractChunk* CreateQenMapDataInst();
  [[nodiscard]] static CAbstractChunk* CreateZorDrawDataInst();
  [[nodiscard]] static CAbstractChunk* CreatePolyBmpBrushDrawInfoInst();
  [[nodiscard]] static CAbstractChunk* CreateMeshSegmentSetInst();
  [[nodiscard]] static CAbstractChunk* CreateMeshSegmentInst();
};

}  // namespace qenzor
