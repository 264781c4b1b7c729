#include "qenzor/catalogue.h"

#include <cassert>
#include <memory>
#include <new>
#include <typeinfo>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/core/class_row_impl.h"
#include "qenzor/core/equal_impl.h"

namespace qenzor {

namespace {

template <class Chunk>
CAbstractChunk* Make() {
  return new (std::nothrow) Chunk;
}

/// Made when the library is loaded: a child that is forked while another thread makes it at its
/// first use would wait for that thread for ever. Never destroyed, for whoever comes late.
// NOLINTBEGIN(*-use-equals-default,*-union-access,*-avoid-non-const-global-variables): as it says
template <class Converter>
class CShared {
 public:
  CShared() noexcept : m_converter() {}
  ~CShared() {}  // leaves the member alone
  CShared(const CShared&) = delete;
  CShared& operator=(const CShared&) = delete;

  Converter& Get() { return m_converter; }

 private:
  union {
    Converter m_converter;
  };
};
template <class Converter>
CShared<Converter> g_shared;
// NOLINTEND(*-use-equals-default,*-union-access,*-avoid-non-const-global-variables)

template <class Converter>
CAbstractChunkTextConverter& SharedConverter() {
  return g_shared<Converter>.Get();
}

template <class T, class Base>
bool IsA(const Base& object) {
  return typeid(object) == typeid(T) || dynamic_cast<const T*>(&object) != nullptr;
}

template <class T, class Base>
bool AreEqual(const Base& a, const Base& b) {
  assert((IsA<T, Base>(a) && IsA<T, Base>(b)));
  const auto& left = static_cast<const T&>(a);
  const auto& right = static_cast<const T&>(b);
  if constexpr (requires { left.GetElemCount(); })
    return EqualSets(left, right);
  else
    return EqualFields(FieldsOf<T>(), left, right);
}

template <class Chunk>
constexpr decltype(ClassRow::PrefetchElem) PrefetchElemOf() {
  if constexpr (requires(const Chunk& set) { set.PrefetchElem(0); })
    return [](const CAbstractChunk& set, std::uint64_t key) {
      static_cast<const Chunk&>(set).PrefetchElem(key);
    };
  else
    return nullptr;
}

template <class Chunk>
constexpr ClassRow kRow{
    Chunk::kTag,
    []() -> CAbstractChunkEdit* { return new typename Chunk::EditClass; },
    []() -> CAbstractChunkTextConverter* { return new typename Chunk::ConverterClass; },
    &SharedConverter<typename Chunk::ConverterClass>,
    &IsA<typename Chunk::ConverterClass, CAbstractChunkTextConverter>,
    &IsA<typename Chunk::EditClass, CAbstractChunkEdit>,
    PrefetchElemOf<Chunk>(),
    &AreEqual<Chunk, CAbstractChunk>,
    &AreEqual<typename Chunk::EditClass, CAbstractChunkEdit>,
    [](CAbstractChunkEdit& edit, CXmlElement& elem) {
      assert((IsA<typename Chunk::EditClass, CAbstractChunkEdit>(edit)));
      Chunk::ConverterClass::FillEdit(static_cast<typename Chunk::EditClass&>(edit), elem);
    }};

constexpr auto kRows =
    WithAllClasses([]<class... Rows>() { return std::array{kRow<typename Rows::Chunk>...}; });

constexpr auto kCreators = [] {
  std::array<CChunkFactory::Creator, kChunkIds> creators{};
  creators[0] = &CChunkFactory::CreateUnKnownChunkInst;
  ForEachClass([&]<class Row>(Row) { creators[Row::kChunkId] = &Make<typename Row::Chunk>; });
  return creators;
}();

}  // namespace

constinit const std::span<const CChunkFactory::Creator> CChunkFactory::kCreatorsById = kCreators;

std::span<const ClassRow> ClassRows() noexcept { return kRows; }

template <class Chunk>
const ClassRow& RowInCatalogue() noexcept {
  return kRow<Chunk>;
}

/// Makes the compiler keep the row of every class, and of no other, for the linker.
template <class Catalogue>
struct ListedRows;
template <class... Rows>
struct ListedRows<ClassList<Rows...>> {
  static auto Get() noexcept { return std::array{&RowInCatalogue<typename Rows::Chunk>...}; }
};
template struct ListedRows<Catalogue>;

// The creators whose names the interface fixes. A class that is added since is made by its id.
CAbstractChunk* CChunkFactory::CreateUrlInfoInst() { return Make<CUrlInfo>(); }
CAbstractChunk* CChunkFactory::CreateAddedObjInfoSetInst() { return Make<CAddedObjInfoSet>(); }
CAbstractChunk* CChunkFactory::CreateLineObjInst() { return Make<CLineObj>(); }
CAbstractChunk* CChunkFactory::CreatePolyObjInst() { return Make<CPolyObj>(); }
CAbstractChunk* CChunkFactory::CreateCmbLblObjInst() { return Make<CCmbLblObj>(); }
CAbstractChunk* CChunkFactory::CreateRasLLObjInst() { return Make<CRasLLObj>(); }
CAbstractChunk* CChunkFactory::CreateRasMMObjInst() { return Make<CRasMMObj>(); }
CAbstractChunk* CChunkFactory::CreateObjSetInst() { return Make<CObjSet>(); }
CAbstractChunk* CChunkFactory::CreateZIdObjInst() { return Make<CZIdObj>(); }
CAbstractChunk* CChunkFactory::CreateZIdObjSetInst() { return Make<CZIdObjSet>(); }
CAbstractChunk* CChunkFactory::CreateLayerDataInst() { return Make<CLayerData>(); }
CAbstractChunk* CChunkFactory::CreateLayerSetInst() { return Make<CLayerSet>(); }
CAbstractChunk* CChunkFactory::CreateQenMapDataInst() { return Make<CQenMapData>(); }
CAbstractChunk* CChunkFactory::CreateMarkDataInst() { return Make<CMarkData>(); }
CAbstractChunk* CChunkFactory::CreateMarkDataSetInst() { return Make<CMarkDataSet>(); }
CAbstractChunk* CChunkFactory::CreateRasMMDrawInfoInst() { return Make<CRasMMDrawInfo>(); }
CAbstractChunk* CChunkFactory::CreateRasLLDrawInfoInst() { return Make<CRasLLDrawInfo>(); }
CAbstractChunk* CChunkFactory::CreateCmbLblDrawInfoInst() { return Make<CCmbLblDrawInfo>(); }
CAbstractChunk* CChunkFactory::CreatePolyShadowDrawInfoInst() {
  return Make<CPolyShadowDrawInfo>();
}
CAbstractChunk* CChunkFactory::CreatePolyBmpBrushDrawInfoInst() {
  return Make<CPolyBmpBrushDrawInfo>();
}
CAbstractChunk* CChunkFactory::CreatePolySolidBrushDrawInfoInst() {
  return Make<CPolySolidBrushDrawInfo>();
}
CAbstractChunk* CChunkFactory::CreateLineDrawInfoInst() { return Make<CLineDrawInfo>(); }
CAbstractChunk* CChunkFactory::CreateDrawInfoSetInst() { return Make<CDrawInfoSet>(); }
CAbstractChunk* CChunkFactory::CreateDrawInfoIdxSetInst() { return Make<CDrawInfoIdxSet>(); }
CAbstractChunk* CChunkFactory::CreateDrawAtterInst() { return Make<CDrawAtter>(); }
CAbstractChunk* CChunkFactory::CreateDrawAtterSetInst() { return Make<CDrawAtterSet>(); }
CAbstractChunk* CChunkFactory::CreateZorDrawDataInst() { return Make<CZorDrawData>(); }
CAbstractChunk* CChunkFactory::CreateMeshSegmentSetInst() { return Make<CMeshSegmentSet>(); }
CAbstractChunk* CChunkFactory::CreateMeshSegmentInst() { return Make<CMeshSegment>(); }

}  // namespace qenzor
