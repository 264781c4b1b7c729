#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "qenzor/html/page.h"
#include "qenzor/view/style_book.h"

namespace qenzor {

using Json = nlohmann::ordered_json;

/// The style of a page: which layers of MapLibre draw the objects of which layers of the map.
///
/// Objects that are drawn by the same draw infos are of one class. A style layer draws some classes
/// of one map layer by one draw info in one band of scales.
class CStyleLayers {
 public:
  /// Style layers of one page; more take a browser minutes.
  static constexpr std::size_t kMaxLayers = 4096;

  CStyleLayers(const HtmlContent& content, WarningSink warn);

  /// The class of an object, which the style now draws; nothing for one that is not drawn.
  std::optional<std::uint32_t> AddObject(const ObjectAt& at);
  /// The draw infos of each class.
  const std::vector<std::vector<std::int64_t>>& GetClasses() const { return m_classes; }
  /// MapLibre's layers, from below to above. Takes note of images and marks.
  Json MakeLayers();

  /// Has MakeLayers draw a raster by its edges, which needs a style layer and a source of its own.
  void AddRaster(const ObjectAt& at, std::uint32_t drawn_as, const MapBox& rect);
  /// Those sources, by the names that the style knows, with the images that they show.
  const Json& GetRasterSources() const { return m_raster_sources; }

  /// The images that the style names, by their ids.
  Json GetImageUses() const;
  /// The files of those images, by their bare names, with their numbers.
  const std::map<std::u16string, std::size_t>& GetFiles() const { return m_files; }
  /// The marks that the style names, as what a page draws.
  Json GetMarks() const;

 private:
  using Classes = std::vector<std::uint32_t>;
  /// In drawing order: labels are last, of lower layers above, so that they are placed first.
  using Order = std::tuple<bool, std::int32_t, DrawSort, std::size_t, std::int64_t, ObjectKind>;
  struct Group {
    std::uint16_t Layer = 0;
    ObjectKind Kind = ObjectKind::kLine;
    std::int64_t Info = 0;
    Classes Drawn;
  };
  struct Raster {
    std::uint16_t Layer;
    std::uint32_t Class;
    MapBox Rect;
  };
  struct ImageUse {
    std::size_t File;
    std::optional<std::uint32_t> ColorKey;
  };
  /// A draw info at the zooms between which its sizes change evenly.
  struct Samples {
    std::vector<double> Zooms;
    std::vector<Style> Styles;
  };

  Samples Sample(const Group& group, const ScaleBand& band) const;
  void AddLayers(Json& layers, const Group& group, const Samples& samples);
  static Json MakeLayer(const Group& group, const Samples& samples, const char* type);
  static void DrawStroke(Json& layer, const Samples& samples);
  void DrawArea(Json& layer, const Samples& samples);
  void DrawLabel(Json& layer, const Samples& samples);
  void DrawRasterPoint(Json& layer, const Samples& samples);
  void AddRasterLayers(Json& layers, const Group& group, const Samples& samples);
  std::string ImageId(std::u16string_view name, std::optional<std::uint32_t> color_key);
  std::optional<DrawSort> FindSort(std::int64_t info, ObjectKind kind) const;

  const HtmlContent& m_content;
  WarningSink m_warn;
  CStyleBook m_book;
  std::map<std::pair<ObjectKind, std::vector<std::int64_t>>, std::uint32_t> m_class_of;
  std::vector<std::vector<std::int64_t>> m_classes;
  std::map<std::pair<std::uint64_t, ObjectKind>, std::uint32_t> m_known;
  std::set<std::pair<std::uint16_t, std::uint32_t>> m_seen;  // layer and class
  std::map<Order, Group> m_groups;
  std::vector<Raster> m_rasters;
  Json m_raster_sources = Json::object();
  std::map<std::u16string, std::size_t> m_files;
  std::map<std::string, ImageUse> m_images;
  std::set<std::uint32_t> m_marks;
};

}  // namespace qenzor
