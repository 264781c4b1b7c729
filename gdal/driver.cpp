// What GDAL calls when it loads the plugin.

#include <gdal_priv.h>

#include "gdal/map_dataset.h"
#include "gdal/map_writer.h"
#include "qenzor/version.h"

extern "C" CPL_DLL void RegisterOGRQENZOR() {
  if (!GDAL_CHECK_VERSION("QENZOR driver") || GDALGetDriverByName("QENZOR") != nullptr) return;
  auto* driver = new GDALDriver();
  driver->SetDescription("QENZOR");
  driver->SetMetadataItem(GDAL_DCAP_VECTOR, "YES");
  driver->SetMetadataItem(GDAL_DMD_LONGNAME, "Map project (qenzor " QENZOR_VERSION ")");
  driver->SetMetadataItem(GDAL_DMD_EXTENSION, "qen");
  driver->SetMetadataItem(GDAL_DMD_EXTENSIONS, "qen");
  driver->SetMetadataItem(GDAL_DCAP_VIRTUALIO, "YES");
  driver->SetMetadataItem(GDAL_DCAP_FEATURE_STYLES, "YES");
  driver->SetMetadataItem(GDAL_DCAP_CREATE_LAYER, "YES");
  driver->SetMetadataItem(GDAL_DCAP_CREATE_FIELD, "YES");
  driver->SetMetadataItem(GDAL_DMD_CREATIONFIELDDATATYPES,
                          "Integer Integer64 Real String StringList");
  driver->SetMetadataItem(GDAL_DMD_OPENOPTIONLIST, R"(<OpenOptionList>
  <Option name='UNIT' type='string' description='Degrees per unit of the map rectangle, a number or a fraction' default='1/3600000'/>
  <Option name='ORIGIN' type='string-select' description='What coordinates are relative to in their segment' default='centre'>
    <Value>centre</Value><Value>south-west</Value></Option>
  <Option name='ROWS' type='string-select' description='Where rows of segments run' default='north'>
    <Value>north</Value><Value>south</Value></Option>
  <Option name='COEF' type='string' description='Units of the map rectangle per unit of an object'/>
  <Option name='CRS' type='string' description='Coordinate reference system, or none'/>
  <Option name='PLAIN' type='boolean' description='Take coordinates as they stand' default='NO'/>
  <Option name='DRAW' type='string' description='Drawing file; by default the .zor file beside the map'/>
  <Option name='SCALE' type='float' description='Denominator of the scale of the feature styles; by default the smallest scale of each draw info'/>
</OpenOptionList>)");
  driver->SetMetadataItem(GDAL_DMD_CREATIONOPTIONLIST, R"(<CreationOptionList>
  <Option name='BBOX' type='string' description='Map rectangle as W,S,E,N in degrees; by default that of the data'/>
  <Option name='SEGMENTS' type='string' description='Mesh as XxY; by default the coarsest that fits'/>
  <Option name='COEF' type='int' description='Units of 1/3600000 degree per unit of an object; by default the finest that fits'/>
  <Option name='GEO' type='int' description='Code of the geographic coordinate system' default='1'/>
  <Option name='LABEL_FIELD' type='string' description='Field with the texts of labels' default='Text'/>
  <Option name='ZID_FIELD' type='string' description='Field with the z-ids; by default z_id, else features are numbered'/>
</CreationOptionList>)");
  driver->SetMetadataItem(GDAL_DS_LAYER_CREATIONOPTIONLIST, R"(<LayerCreationOptionList>
  <Option name='LAYER_NO' type='int' description='Number of the layer in the map'/>
</LayerCreationOptionList>)");
  driver->pfnIdentify = qenzor::gdal::CMapDataset::Identify;
  driver->pfnOpen = qenzor::gdal::CMapDataset::Open;
  driver->pfnCreate = qenzor::gdal::CMapWriter::Create;
  GetGDALDriverManager()->RegisterDriver(driver);
}
