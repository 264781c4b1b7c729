#include "gdal/map_dataset.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "gdal/vsi_file.h"
#include "qenzor/qen_document.h"
#include "qenzor/zor_document.h"

namespace qenzor::gdal {

namespace {

// Where the front of a binary document holds what tells it from other files.
constexpr std::size_t kMarkOffset = 6;
constexpr std::size_t kMagicOffset = 9;
constexpr std::string_view kMark = "\x0D\x0A\x1A";

template <class Info>
bool IsBinary(std::string_view front, std::uint32_t root) {
  constexpr std::size_t root_offset = PackedSize<Info>();
  if (front.size() < root_offset + sizeof root || front.substr(kMarkOffset, 3) != kMark)
    return false;
  std::uint16_t magic = 0;
  std::uint32_t id = 0;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(front.data());
  LoadPacked(bytes + kMagicOffset, magic);
  LoadPacked(bytes + root_offset, id);
  return magic == Info::kMagic && id == root;
}

/// Whether the first element of the text, behind declarations and comments, is of this name.
bool IsXmlOf(std::string_view text, std::string_view name) {
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
  while (true) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos || text[begin] != '<') return false;
    text.remove_prefix(begin + 1);
    if (text.empty() || (text[0] != '?' && text[0] != '!')) break;
    const std::string_view end = text.substr(0, 3) == "!--" ? "-->" : ">";
    const std::size_t behind = text.find(end);
    if (behind == std::string_view::npos) return false;
    text.remove_prefix(behind + end.size());
  }
  return text.substr(0, name.size()) == name && text.size() > name.size() &&
         std::string_view(" \t\r\n/>").find(text[name.size()]) != std::string_view::npos;
}

std::string_view FrontOf(const GDALOpenInfo& info) {
  return {reinterpret_cast<const char*>(info.pabyHeader),
          static_cast<std::size_t>(info.nHeaderBytes)};
}

void Tell(CPLErr severity, CPLErrorNum number, const std::string& path, Failure failure) {
  failure.Path = path;
  CPLError(severity, number, "%s", failure.Describe().c_str());
}

/// The document in the file in either form, or null and a message.
template <class Doc, class ReadBinary, class ReadXml, class Take>
std::unique_ptr<Doc> ReadEither(const std::string& path, bool is_binary, CPLErr severity,
                                const ReadBinary& read_binary, const ReadXml& read_xml,
                                const Take& take) {
  CVsiFile file;
  if (!file.OpenVsi(path, "rb")) {
    CPLError(severity, CPLE_OpenFailed, "%s: cannot be opened", path.c_str());
    return nullptr;
  }
  if (is_binary) {
    auto document = read_binary(file);
    if (document) return document.Take();
    Tell(severity, CPLE_OpenFailed, path, document.GetFailure());
    return nullptr;
  }
  auto edit = read_xml(file);
  if (edit) return std::unique_ptr<Doc>(take(*edit));
  Tell(severity, CPLE_OpenFailed, path, edit.GetFailure());
  return nullptr;
}

std::unique_ptr<CZor> ReadDrawingFile(const std::string& path) {
  CVsiFile file;
  std::string front(1024, '\0');
  if (file.OpenVsi(path, "rb"))
    front.resize(file.Read(front.data(), static_cast<std::uint32_t>(front.size())));
  return ReadEither<CZor>(
      path, !IsXmlOf(front, "Zor"), CE_Warning, [](CFile& in) { return ReadZor(in); },
      [](CFile& in) { return ReadZorXml(in); }, [](CZorEdit& edit) { return edit.TakeZorData(); });
}

std::optional<FrameOptions> FrameOptionsOf(CSLConstList options) {
  std::string words;
  for (const char* key : {"UNIT", "ORIGIN", "ROWS", "COEF"})
    if (const char* value = CSLFetchNameValue(options, key))
      words += (words.empty() ? "" : ",") + CPLString(key).tolower() + '=' + value;
  if (const char* plain = CSLFetchNameValue(options, "PLAIN"))
    words += std::string(words.empty() ? "" : ",") + "plain=" + (CPLTestBool(plain) ? "on" : "off");
  FrameOptions frame;
  if (!words.empty()) {
    Result<FrameOptions> parsed = FrameOptions::Parse(words);
    if (!parsed) {
      CPLError(CE_Failure, CPLE_IllegalArg, "%s", parsed.GetFailure().Reason.c_str());
      return std::nullopt;
    }
    frame = *parsed;
  }
  if (const char* crs = CSLFetchNameValue(options, "CRS")) frame.Crs = crs;
  return frame;
}

}  // namespace

int CMapDataset::Identify(GDALOpenInfo* info) {
  if (info->fpL == nullptr) return FALSE;
  const std::string_view front = FrontOf(*info);
  return static_cast<int>(IsBinary<QenFileInfo>(front, CQenMapData::kChunkId) ||
                          IsXmlOf(front, "Qen"));
}

GDALDataset* CMapDataset::Open(GDALOpenInfo* info) {
  // Maps are not changed in place; who wants that may be content to read.
  if (Identify(info) == FALSE || info->eAccess == GA_Update) return nullptr;
  const auto options = FrameOptionsOf(info->papszOpenOptions);
  if (!options.has_value()) return nullptr;
  const bool is_binary = !IsXmlOf(FrontOf(*info), "Qen");
  std::unique_ptr<CQen> map = ReadEither<CQen>(
      info->pszFilename, is_binary, CE_Failure, [](CFile& in) { return ReadQen(in); },
      [](CFile& in) { return ReadQenXml(in); }, [](CQenEdit& edit) { return edit.TakeQenData(); });
  if (map == nullptr || map->MapData == nullptr) return nullptr;
  std::unique_ptr<CMapDataset> dataset(new CMapDataset(std::move(map), *options));
  dataset->SetDescription(info->pszFilename);
  dataset->ReadDrawing(info->pszFilename, info->papszOpenOptions);
  dataset->MakeLayers(is_binary);
  return dataset.release();
}

CMapDataset::CMapDataset(std::unique_ptr<CQen> map, const FrameOptions& options)
    : m_map(std::move(map)), m_frame(*m_map, options) {
  m_frame.Warn(*m_map, [](const std::string& warning) {
    CPLError(CE_Warning, CPLE_AppDefined, "%s", warning.c_str());
  });
  if (m_frame.GetCrs().empty()) return;
  m_crs = new OGRSpatialReference();
  m_crs->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  if (m_crs->SetFromUserInput(m_frame.GetCrs().c_str()) != OGRERR_NONE) {
    m_crs->Release();
    m_crs = nullptr;
  }
}

CMapDataset::~CMapDataset() {
  m_layers.clear();
  if (m_crs != nullptr) m_crs->Release();
}

void CMapDataset::ReadDrawing(const std::string& map_path, CSLConstList options) {
  const char* given = CSLFetchNameValue(options, "DRAW");
  const std::string path = given != nullptr ? given : CPLResetExtension(map_path.c_str(), "zor");
  VSIStatBufL status;
  if (given == nullptr && (path == map_path || VSIStatL(path.c_str(), &status) != 0)) return;
  m_drawing = ReadDrawingFile(path);
  if (m_drawing == nullptr) return;
  m_drawing_path = path;
  std::optional<double> denominator;
  if (const char* scale = CSLFetchNameValue(options, "SCALE")) {
    denominator = CPLAtof(scale);
    if (!(*denominator > 0)) {
      CPLError(CE_Warning, CPLE_IllegalArg, "SCALE=%s is not above 0 and is not used", scale);
      denominator.reset();
    }
  }
  m_styles = std::make_unique<CFeatureStyles>(*m_drawing, denominator);
}

void CMapDataset::MakeLayers(bool trusts_bounds) {
  for (CFeatureIndex& index : IndexFeatures(*m_map, trusts_bounds))
    m_layers.push_back(
        std::make_unique<CMapLayer>(std::move(index), m_frame, m_crs, m_styles.get()));
}

OGRLayer* CMapDataset::GetLayer(int number) {
  if (number < 0 || number >= GetLayerCount()) return nullptr;
  return m_layers[static_cast<std::size_t>(number)].get();
}

int CMapDataset::TestCapability(const char* /*capability*/) { return FALSE; }

char** CMapDataset::GetFileList() {
  CPLStringList files(GDALDataset::GetFileList());
  if (!m_drawing_path.empty() && files.FindString(m_drawing_path.c_str()) < 0)
    files.AddString(m_drawing_path.c_str());
  return files.StealList();
}

}  // namespace qenzor::gdal
