#pragma once

namespace qenzor::testing {

// XML in which there is nothing to find, with its lines numbered.

inline constexpr const char* kGoodMapXml =
    "<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>\n"                         // 1
    "<Qen>\n"                                                                   // 2
    "\t<QenFileInfo>\n"                                                         // 3
    "\t\t<Ident>QENMAP</Ident>\n"                                               // 4
    "\t\t<Magic>0x4041</Magic>\n"                                               // 5
    "\t\t<MajorVer>1</MajorVer>\n"                                              // 6
    "\t\t<MinorVer>0</MinorVer>\n"                                              // 7
    "\t\t<Revision>7</Revision>\n"                                              // 8
    "\t\t<GeoCoodinate>1</GeoCoodinate>\n"                                      // 9
    "\t\t<IncRect W=\"0\" S=\"0\" E=\"2000\" N=\"1000\" />\n"                   // 10
    "\t\t<SegmentNumX>2</SegmentNumX>\n"                                        // 11
    "\t\t<SegmentNumY>1</SegmentNumY>\n"                                        // 12
    "\t\t<CompCoef>1</CompCoef>\n"                                              // 13
    "\t</QenFileInfo>\n"                                                        // 14
    "\t<QenMapData>\n"                                                          // 15
    "\t\t<MeshSegmentSet><MeshSegment><MeshSegmentNo>1</MeshSegmentNo>\n"       // 16
    "\t\t<LayerSet><LayerData><LayerNo>3</LayerNo>\n"                           // 17
    "\t\t<ZIdObjSet><ZIdObj><ZId>70000000000</ZId>\n"                           // 18
    "\t\t<ObjSet>\n"                                                            // 19
    "\t\t\t<LineObj>\n"                                                         // 20
    "\t\t\t\t<Pt x=\"1\" y=\"-2\" />\n"                                         // 21
    "\t\t\t\t<Pt x=\"3\" y=\"4\" />\n"                                          // 22
    "\t\t\t\t<AddedObjInfoSet><UrlInfo>http://a</UrlInfo></AddedObjInfoSet>\n"  // 23
    "\t\t\t</LineObj>\n"                                                        // 24
    "\t\t\t<PolyObj><Height>5</Height><Pt x=\"1\" y=\"2\" /></PolyObj>\n"       // 25
    "\t\t\t<CmbLblObj><CtrlFlgs>1</CtrlFlgs><Angle>1.5</Angle>\n"               // 26
    "\t\t\t\t<Pt x=\"1\" y=\"2\" />\n"                                          // 27
    "\t\t\t\t<LblOffsetFontRate>0.5000000000</LblOffsetFontRate>\n"             // 28
    "\t\t\t\t<LblOffsetAngle>-1e-2</LblOffsetAngle>\n"                          // 29
    "\t\t\t\t<Text>a&amp;nbsp;b</Text>\n"                                       // 30
    "\t\t\t</CmbLblObj>\n"                                                      // 31
    "\t\t\t<RasLLObj><Rect W=\"1\" S=\"2\" E=\"3\" N=\"4\" /></RasLLObj>\n"     // 32
    "\t\t</ObjSet>\n"                                                           // 33
    "\t\t</ZIdObj></ZIdObjSet></LayerData></LayerSet></MeshSegment></MeshSegmentSet>\n"
    "\t</QenMapData>\n"
    "</Qen>\n";

inline constexpr const char* kGoodDrawingXml =
    "<Zor>\n"                                                                     // 1
    "<ZorFileInfo><Ident>ZORDRW</Ident><Magic>0x4041</Magic>\n"                   // 2
    "<MajorVer>1</MajorVer><MinorVer>0</MinorVer><Revision>0</Revision>\n"        // 3
    "</ZorFileInfo>\n"                                                            // 4
    "<ZorDrawData>\n"                                                             // 5
    "<DrawAtterSet><DrawAtter><ZId>5</ZId>\n"                                     // 6
    "<DrawInfoIdxSet><DrawInfoIdx>0</DrawInfoIdx>\n"                              // 7
    "<DrawInfoIdx>1</DrawInfoIdx></DrawInfoIdxSet></DrawAtter></DrawAtterSet>\n"  // 8
    "<DrawInfoSet>\n"                                                             // 9
    "<LineDrawInfo>\n"                                                            // 10
    "<ComData><LineCode>0</LineCode>\n"                                           // 11
    "<Color A=\"255\" R=\"0\" G=\"16\" B=\"0\" />\n"                              // 12
    "<Aspect>1</Aspect></ComData>\n"                                              // 13
    "<ScData><DenomMax>20</DenomMax><DenomMin>10</DenomMin>\n"                    // 14
    "<DenomMaxWidth>2</DenomMaxWidth><Sensitivity>0</Sensitivity>\n"              // 15
    "<Extension>0</Extension></ScData>\n"                                         // 16
    "</LineDrawInfo>\n"                                                           // 17
    "<PolyShadowDrawInfo><ComData>\n"                                             // 18
    "<ShadowColor A=\"1\" R=\"2\" G=\"3\" B=\"4\" /></ComData>\n"                 // 19
    "<ScData><DenomMax>20</DenomMax><DenomMin>10</DenomMin>\n"                    // 20
    "<DenomMaxOffset x=\"1\" y=\"2\" /><Sensitivity>0</Sensitivity></ScData>\n"   // 21
    "</PolyShadowDrawInfo></DrawInfoSet>\n"                                       // 22
    "</ZorDrawData>\n"                                                            // 23
    "</Zor>\n";

}  // namespace qenzor::testing
