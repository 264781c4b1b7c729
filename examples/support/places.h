#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "examples/support/topology.h"

namespace world {

/// The Japanese name of the country, empty where the sample gives none.
std::u16string_view JapaneseName(std::uint64_t country_id);

/// A place with a label of its own.
struct Place {
  std::u16string_view name;  ///< lines parted by line feeds
  qenzor::CPoint position;   ///< arc seconds
};

/// Hundredths of a degree east and north, in arc seconds.
constexpr qenzor::CPoint AtDegrees100(std::int32_t east, std::int32_t north) {
  return {east * 36, north * 36};
}

inline constexpr std::array kCapitals{
    Place{u"Tokyo\n東京", AtDegrees100(13969, 3569)},
    Place{u"Beijing\n北京", AtDegrees100(11640, 3990)},
    Place{u"Seoul\nソウル", AtDegrees100(12698, 3757)},
    Place{u"New Delhi\nニューデリー", AtDegrees100(7721, 2861)},
    Place{u"Moscow\nモスクワ", AtDegrees100(3762, 5575)},
    Place{u"Berlin\nベルリン", AtDegrees100(1341, 5252)},
    Place{u"Paris\nパリ", AtDegrees100(235, 4886)},
    Place{u"London\nロンドン", AtDegrees100(-13, 5151)},
    Place{u"Cairo\nカイロ", AtDegrees100(3124, 3004)},
    Place{u"Nairobi\nナイロビ", AtDegrees100(3682, -129)},
    Place{u"Canberra\nキャンベラ", AtDegrees100(14913, -3528)},
    Place{u"Ottawa\nオタワ", AtDegrees100(-7570, 4542)},
    Place{u"Washington, D.C.\nワシントンD.C.", AtDegrees100(-7704, 3891)},
    Place{u"Brasilia\nブラジリア", AtDegrees100(-4788, -1579)},
    Place{u"Buenos Aires\nブエノスアイレス", AtDegrees100(-5838, -3460)},
};

inline constexpr std::array kAirports{
    Place{u"HND", AtDegrees100(13978, 3555)}, Place{u"CDG", AtDegrees100(255, 4901)},
    Place{u"JNB", AtDegrees100(2824, -2613)}, Place{u"SYD", AtDegrees100(15118, -3395)},
    Place{u"JFK", AtDegrees100(-7378, 4064)}, Place{u"GRU", AtDegrees100(-4647, -2344)},
};

/// Where the map shows an image of the peak, and the corners of the area shown as an image.
inline constexpr qenzor::CPoint kFuji = AtDegrees100(13873, 3536);
inline constexpr qenzor::CPoint kHoggarSouthWest = AtDegrees100(300, 2000);
inline constexpr qenzor::CPoint kHoggarNorthEast = AtDegrees100(1100, 2700);

}  // namespace world
