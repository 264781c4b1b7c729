#pragma once

#include <memory>
#include <string>

#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/layer_set.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/mesh_segment_set.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/qen/qen.h"
#include "qenzor/qen/z_id_obj.h"
#include "qenzor/qen/z_id_obj_set.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {

/// What a converter writes as the content of a chunk.
inline std::string XmlOf(CAbstractChunkTextConverter& converter, CAbstractChunk* chunk,
                         std::uint32_t level = 0) {
  CMemFile sink;
  {
    CStdioFile file(sink);
    converter.ConvertDataToString(file, chunk, level);
  }
  return {sink.GetBytes().begin(), sink.GetBytes().end()};
}

/// A whole chunk as an element.
inline std::string XmlElement(const std::string& tag, CAbstractChunk* chunk,
                              std::uint32_t level = 0) {
  CMemFile sink;
  {
    CStdioFile file(sink);
    CAbstractChunkTextConverter::ConvertChunkToString(file, tag, chunk, level);
  }
  return {sink.GetBytes().begin(), sink.GetBytes().end()};
}

/// The document edit that XML text gives, or null.
inline std::unique_ptr<CQenEdit> EditFromXml(const std::string& xml) {
  const TempFile file{std::string_view(xml)};
  return std::unique_ptr<CQenEdit>(CQenTextConverter().ConvertTextToQenEdit(file.Path()));
}

/// A document edit with one mesh segment, one layer and one z-id object, whose object set element
/// has the content given.
inline std::unique_ptr<CQenEdit> EditFromObjectXml(const std::string& objects) {
  return EditFromXml(
      "<Qen><QenMapData><MeshSegmentSet><MeshSegment><LayerSet><LayerData><ZIdObjSet><ZIdObj>"
      "<ObjSet>" +
      objects +
      "</ObjSet></ZIdObj></ZIdObjSet></LayerData></LayerSet></MeshSegment></MeshSegmentSet>"
      "</QenMapData></Qen>");
}

inline CMeshSegmentEdit* FirstSegment(CQenEdit& edit) {
  return edit.MapData->MeshSegmentSet->GetElem(0);
}
inline CLayerDataEdit* FirstLayer(CQenEdit& edit) {
  return FirstSegment(edit)->LayerSet->GetElem(0);
}
inline CZIdObjEdit* FirstZId(CQenEdit& edit) { return FirstLayer(edit)->ZIdObjSet->GetElem(0); }
inline CObjSetEdit* FirstObjSet(CQenEdit& edit) { return FirstZId(edit)->ObjSet.get(); }

/// The first object of the first object set as its class; null when it is none of that.
template <class ObjEdit>
ObjEdit* FirstObject(CQenEdit& edit) {
  return dynamic_cast<ObjEdit*>(FirstObjSet(edit)->GetElem(0));
}

}  // namespace qenzor::testing
