import os
from collections.abc import Iterable, Iterator
from typing import Any, BinaryIO, Literal

from ._errors import ReadError as ReadError, WriteError as WriteError
from ._qenzor import (
    AbstractAddedObjInfo as AbstractAddedObjInfo,
    AbstractDrawInfo as AbstractDrawInfo,
    AbstractObj as AbstractObj,
    AddedObjInfoSet as AddedObjInfoSet,
    CmbLblDrawInfo as CmbLblDrawInfo,
    CmbLblDrawScData as CmbLblDrawScData,
    CmbLblObj as CmbLblObj,
    Data as Data,
    Document as Document,
    DrawAtter as DrawAtter,
    DrawAtterSet as DrawAtterSet,
    DrawInfoIdxSet as DrawInfoIdxSet,
    DrawInfoSet as DrawInfoSet,
    FieldList as FieldList,
    Frame as Frame,
    LayerData as LayerData,
    LayerSet as LayerSet,
    LineDrawInfo as LineDrawInfo,
    LineDrawScData as LineDrawScData,
    LineObj as LineObj,
    MarkData as MarkData,
    MarkDataSet as MarkDataSet,
    MarkElem as MarkElem,
    MeshSegment as MeshSegment,
    MeshSegmentSet as MeshSegmentSet,
    ObjSet as ObjSet,
    ObjectIterator as ObjectIterator,
    PolyBmpBrushDrawInfo as PolyBmpBrushDrawInfo,
    PolyBmpBrushDrawScData as PolyBmpBrushDrawScData,
    PolyObj as PolyObj,
    PolyShadowDrawInfo as PolyShadowDrawInfo,
    PolyShadowDrawScData as PolyShadowDrawScData,
    PolySolidBrushDrawInfo as PolySolidBrushDrawInfo,
    PolySolidBrushDrawScData as PolySolidBrushDrawScData,
    Qen as Qen,
    QenEdit as QenEdit,
    QenFileInfo as QenFileInfo,
    QenMapData as QenMapData,
    RasLLDrawInfo as RasLLDrawInfo,
    RasLLDrawScData as RasLLDrawScData,
    RasLLObj as RasLLObj,
    RasMMDrawInfo as RasMMDrawInfo,
    RasMMDrawScData as RasMMDrawScData,
    RasMMObj as RasMMObj,
    UrlInfo as UrlInfo,
    ZIdObj as ZIdObj,
    ZIdObjSet as ZIdObjSet,
    Zor as Zor,
    ZorDrawData as ZorDrawData,
    ZorEdit as ZorEdit,
    ZorFileInfo as ZorFileInfo,
)
from ._types import (
    Arrays as Arrays,
    Finding as Finding,
    Point as Point,
    Rect as Rect,
    Style as Style,
)
from .flags import (
    FontFlags as FontFlags,
    FrameKind as FrameKind,
    LabelDrawFlags as LabelDrawFlags,
    LabelFlags as LabelFlags,
    LabelOrigin as LabelOrigin,
    LineCode as LineCode,
)

_Document = Literal["qen", "zor"]
_Encoding = Literal["shift_jis", "utf-8", "auto"]
_Source = str | os.PathLike[str] | os.PathLike[bytes] | bytes | bytearray | memoryview | BinaryIO

__version__: str

def read(
    source: _Source, kind: _Document | None = None, *, encoding: _Encoding = "shift_jis"
) -> Any: ...
def check(
    source: _Source,
    kind: _Document | None = None,
    *,
    max_details: int = 1000,
    skip: Iterable[str] = (),
    first_error_only: bool = False,
    round_trip: bool = False,
) -> Iterator[Finding]: ...
