#include "examples/support/places.h"

#include <algorithm>

namespace world {
namespace {

struct CountryName {
  std::uint64_t id;
  std::u16string_view name;
};

constexpr std::array kJapaneseNames{
    CountryName{10, u"南極大陸"},        CountryName{32, u"アルゼンチン"},
    CountryName{36, u"オーストラリア"},  CountryName{76, u"ブラジル"},
    CountryName{124, u"カナダ"},         CountryName{156, u"中国"},
    CountryName{246, u"フィンランド"},   CountryName{250, u"フランス"},
    CountryName{276, u"ドイツ"},         CountryName{300, u"ギリシャ"},
    CountryName{304, u"グリーンランド"}, CountryName{356, u"インド"},
    CountryName{360, u"インドネシア"},   CountryName{380, u"イタリア"},
    CountryName{392, u"日本"},           CountryName{404, u"ケニア"},
    CountryName{410, u"大韓民国"},       CountryName{484, u"メキシコ"},
    CountryName{496, u"モンゴル"},       CountryName{554, u"ニュージーランド"},
    CountryName{604, u"ペルー"},         CountryName{643, u"ロシア"},
    CountryName{704, u"ベトナム"},       CountryName{710, u"南アフリカ"},
    CountryName{724, u"スペイン"},       CountryName{764, u"タイ"},
    CountryName{818, u"エジプト"},       CountryName{826, u"イギリス"},
    CountryName{840, u"アメリカ合衆国"},
};

}  // namespace

std::u16string_view JapaneseName(std::uint64_t country_id) {
  const auto* found = std::ranges::find(kJapaneseNames, country_id, &CountryName::id);
  return found == kJapaneseNames.end() ? std::u16string_view{} : found->name;
}

}  // namespace world
