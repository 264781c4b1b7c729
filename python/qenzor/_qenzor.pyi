# The classes of the module, with what the package adds to them. __init__.pyi makes them public.

import os
from collections.abc import Callable, Iterable, Iterator, Mapping, MutableSequence
from typing import Any, ClassVar, Literal, SupportsIndex, TypeVar, final, overload

import numpy as np
import numpy.typing as npt
from typing_extensions import Self

from ._types import Arrays, Point, Rect, Style

_T = TypeVar("_T")
_D = TypeVar("_D", bound=Data)
_Default = TypeVar("_Default")

_Kind = Literal["line", "polygon", "label", "raster_rect", "raster_point"]
_Encoding = Literal["shift_jis", "utf-8", "auto"]
_Path = str | bytes | os.PathLike[str] | os.PathLike[bytes]
_Numbers = int | Iterable[int]
# Classes by names that fields of the same name do not hide.
_MeshSegmentSet = MeshSegmentSet
_LayerSet = LayerSet
_ZIdObjSet = ZIdObjSet
_ObjSet = ObjSet
_AddedObjInfoSet = AddedObjInfoSet
_DrawAtterSet = DrawAtterSet
_DrawInfoSet = DrawInfoSet
_MarkDataSet = MarkDataSet
_DrawInfoIdxSet = DrawInfoIdxSet
_MarkElem = MarkElem
_Rect = Rect
# The values of a field: any pair of integers counts as a point, an array of two columns as points.
_Points = Iterable[Iterable[int]] | npt.NDArray[Any]

# Containers.

class _Sequence(MutableSequence[_T]):
    @overload
    def __getitem__(self, key: SupportsIndex) -> _T: ...
    @overload
    def __getitem__(self, key: slice) -> list[_T]: ...
    @overload
    def __setitem__(self, key: SupportsIndex, value: Any) -> None: ...
    @overload
    def __setitem__(self, key: slice, value: Iterable[Any]) -> None: ...
    def __delitem__(self, key: SupportsIndex | slice) -> None: ...
    def __len__(self) -> int: ...
    def __iter__(self) -> Iterator[_T]: ...
    def insert(self, index: int, value: Any) -> None: ...
    def append(self, value: Any) -> None: ...
    def extend(self, values: Iterable[Any]) -> None: ...
    def pop(self, index: int = -1) -> _T: ...
    def index(self, value: Any, start: int = 0, stop: int | None = None) -> int: ...
    def sort(self, *, key: Callable[[_T], Any], reverse: bool = False) -> None: ...

@final
class FieldList(_Sequence[_T]): ...

class Data:
    """What stands for a chunk, an edit object or a record."""

    field_names: ClassVar[tuple[str, ...]]
    @property
    def read_only(self) -> bool: ...
    def __copy__(self) -> Self: ...
    def __deepcopy__(self, memo: Any, /) -> Self: ...

class _Set(Data, _Sequence[_D]):
    def __init__(self, elements: Iterable[_D] = ..., /) -> None: ...

# Map projects.

@final
class QenFileInfo(Data):
    Ident: bytes
    Magic: int
    MajorVer: int
    MinorVer: int
    Revision: int
    GeoCoodinate: int
    IncRect: _Rect
    SegmentNumX: int
    SegmentNumY: int
    CompCoef: int
    def __init__(self, **fields: Any) -> None: ...

@final
class QenMapData(Data):
    MeshSegmentSet: _MeshSegmentSet | None
    def __init__(self, **fields: Any) -> None: ...

@final
class MeshSegment(Data):
    MeshSegmentNo: int
    LayerSet: _LayerSet | None
    layers: _LayerSet
    def __init__(
        self,
        *,
        MeshSegmentNo: int = 0,
        LayerSet: _LayerSet | None = None,
        layers: Iterable[LayerData] = (),
    ) -> None: ...

@final
class LayerData(Data):
    LayerNo: int
    ZIdObjSet: _ZIdObjSet | None
    z_ids: _ZIdObjSet
    @property
    def __geo_interface__(self) -> dict[str, Any]: ...
    def __init__(
        self,
        *,
        LayerNo: int = 0,
        ZIdObjSet: _ZIdObjSet | None = None,
        z_ids: Iterable[ZIdObj] = (),
    ) -> None: ...

@final
class ZIdObj(Data):
    ZId: int
    ObjSet: _ObjSet | None
    objects: _ObjSet
    def __init__(
        self, *, ZId: int = 0, ObjSet: _ObjSet | None = None, objects: Iterable[AbstractObj] = ()
    ) -> None: ...

class AbstractObj(Data):
    AddedObjInfoSet: _AddedObjInfoSet | None
    links: _AddedObjInfoSet
    points: npt.NDArray[np.int32]
    @property
    def segment(self) -> int | None: ...
    @property
    def layer(self) -> int | None: ...
    @property
    def z_id(self) -> int | None: ...
    @property
    def index(self) -> int | None: ...
    @property
    def kind(self) -> _Kind | None: ...
    @property
    def __geo_interface__(self) -> dict[str, Any]: ...

@final
class LineObj(AbstractObj):
    Pt: FieldList[Point]
    def __init__(self, *, Pt: _Points = (), links: Iterable[UrlInfo] = ()) -> None: ...

@final
class PolyObj(AbstractObj):
    Height: int
    Pt: FieldList[Point]
    def __init__(
        self, *, Height: int = 0, Pt: _Points = (), links: Iterable[UrlInfo] = ()
    ) -> None: ...

@final
class CmbLblObj(AbstractObj):
    CtrlFlgs: int
    Angle: float
    Pt: Point
    LblOffsetFontRate: float
    LblOffsetAngle: float
    Text: str
    def __init__(
        self,
        *,
        CtrlFlgs: int = 0,
        Angle: float = 0,
        Pt: Iterable[int] = (0, 0),
        LblOffsetFontRate: float = 0,
        LblOffsetAngle: float = 0,
        Text: str = "",
        links: Iterable[UrlInfo] = (),
    ) -> None: ...

@final
class RasLLObj(AbstractObj):
    Rect: _Rect
    def __init__(
        self, *, Rect: Iterable[int] = (0, 0, 0, 0), links: Iterable[UrlInfo] = ()
    ) -> None: ...

@final
class RasMMObj(AbstractObj):
    Pt: Point
    def __init__(self, *, Pt: Iterable[int] = (0, 0), links: Iterable[UrlInfo] = ()) -> None: ...

class AbstractAddedObjInfo(Data): ...

@final
class UrlInfo(AbstractAddedObjInfo):
    Text: str
    def __init__(self, *, Text: str = "") -> None: ...

@final
class MeshSegmentSet(_Set[MeshSegment]): ...
@final
class LayerSet(_Set[LayerData]): ...
@final
class ZIdObjSet(_Set[ZIdObj]): ...
@final
class ObjSet(_Set[AbstractObj]): ...
@final
class AddedObjInfoSet(_Set[UrlInfo]): ...

# Draw data.

@final
class ZorFileInfo(Data):
    Ident: bytes
    Magic: int
    MajorVer: int
    MinorVer: int
    Revision: int
    def __init__(self, **fields: Any) -> None: ...

@final
class ZorDrawData(Data):
    DrawAtterSet: _DrawAtterSet | None
    DrawInfoSet: _DrawInfoSet | None
    MarkDataSet: _MarkDataSet | None
    def __init__(self, **fields: Any) -> None: ...

@final
class DrawAtter(Data):
    ZId: int
    DrawInfoIdxSet: _DrawInfoIdxSet | None
    indices: FieldList[int]
    def __init__(
        self,
        *,
        ZId: int = 0,
        DrawInfoIdxSet: _DrawInfoIdxSet | None = None,
        indices: Iterable[int] = (),
    ) -> None: ...

@final
class DrawInfoIdxSet(Data):
    DrawInfoIdx: FieldList[int]
    def __init__(self, *, DrawInfoIdx: Iterable[int] = ()) -> None: ...

class AbstractDrawInfo(Data): ...

@final
class LineDrawInfo(AbstractDrawInfo):
    LineCode: int
    Color: int
    Aspect: float
    ScData: FieldList[LineDrawScData]
    def __init__(self, **fields: Any) -> None: ...

@final
class PolySolidBrushDrawInfo(AbstractDrawInfo):
    Color: int
    ScData: FieldList[PolySolidBrushDrawScData]
    def __init__(self, **fields: Any) -> None: ...

@final
class PolyBmpBrushDrawInfo(AbstractDrawInfo):
    BrushFileName: str
    ScData: FieldList[PolyBmpBrushDrawScData]
    def __init__(self, **fields: Any) -> None: ...

@final
class PolyShadowDrawInfo(AbstractDrawInfo):
    ShadowColor: int
    ScData: FieldList[PolyShadowDrawScData]
    def __init__(self, **fields: Any) -> None: ...

@final
class CmbLblDrawInfo(AbstractDrawInfo):
    CtrlFlgs: int
    MarkDataIdx: int
    FontId: int
    FontCtrl: int
    FrameCtrl: int
    FontColor: int
    FrameColor: int
    ShadowColor: int
    ScData: FieldList[CmbLblDrawScData]
    def __init__(self, **fields: Any) -> None: ...

@final
class RasLLDrawInfo(AbstractDrawInfo):
    RasFileName: str
    ColorKey: int
    ScData: FieldList[RasLLDrawScData]
    def __init__(self, **fields: Any) -> None: ...

@final
class RasMMDrawInfo(AbstractDrawInfo):
    RasFileName: str
    ColorKey: int
    ScData: FieldList[RasMMDrawScData]
    def __init__(self, **fields: Any) -> None: ...

@final
class LineDrawScData(Data):
    DenomMax: int
    DenomMin: int
    DenomMaxWidth: int
    Sensitivity: float
    Extension: int
    def __init__(self, **fields: Any) -> None: ...

@final
class PolySolidBrushDrawScData(Data):
    DenomMax: int
    DenomMin: int
    def __init__(self, **fields: Any) -> None: ...

@final
class PolyBmpBrushDrawScData(Data):
    DenomMax: int
    DenomMin: int
    def __init__(self, **fields: Any) -> None: ...

@final
class PolyShadowDrawScData(Data):
    DenomMax: int
    DenomMin: int
    DenomMaxOffset: Point
    Sensitivity: float
    def __init__(self, **fields: Any) -> None: ...

@final
class CmbLblDrawScData(Data):
    DenomMax: int
    DenomMin: int
    DenomMaxMarkScale: float
    DenomMaxFontSize: int
    DenomMaxFrameMgn: int
    DenomMaxFrameWidth: int
    DenomMaxShadowOffset: int
    Sensitivity: float
    def __init__(self, **fields: Any) -> None: ...

@final
class RasLLDrawScData(Data):
    DenomMax: int
    DenomMin: int
    Alpha: int
    def __init__(self, **fields: Any) -> None: ...

@final
class RasMMDrawScData(Data):
    DenomMax: int
    DenomMin: int
    DenomMaxRasWidth: int
    Sensitivity: float
    def __init__(self, **fields: Any) -> None: ...

@final
class MarkData(Data):
    RectMin: Point
    RectMax: Point
    MarkElem: FieldList[_MarkElem]
    def __init__(self, **fields: Any) -> None: ...

@final
class MarkElem(Data):
    ElemKind: int
    LineWidth: int
    Color: int
    Pt: FieldList[Point]
    points: npt.NDArray[np.int32]
    def __init__(self, **fields: Any) -> None: ...

@final
class DrawInfoSet(_Set[AbstractDrawInfo]): ...
@final
class MarkDataSet(_Set[MarkData]): ...

@final
class DrawAtterSet(Data, Mapping[int, DrawAtter]):
    def __init__(self, elements: Iterable[DrawAtter] = ..., /) -> None: ...
    def __getitem__(self, z_id: int, /) -> DrawAtter: ...
    def __setitem__(self, z_id: int, value: DrawAtter, /) -> None: ...
    def __delitem__(self, z_id: int, /) -> None: ...
    def __iter__(self) -> Iterator[int]: ...
    def __len__(self) -> int: ...
    def add(self, value: DrawAtter, /) -> None: ...
    def extend(self, values: Iterable[DrawAtter]) -> None: ...
    def take(self, z_id: int, /) -> DrawAtter: ...
    @overload
    def pop(self, key: int) -> DrawAtter: ...
    @overload
    def pop(self, key: int, default: _Default) -> DrawAtter | _Default: ...
    def get(self, key: int, default: Any = None) -> Any: ...
    def clear(self) -> None: ...

# Documents.

class Frame:
    def __init__(self, info: QenFileInfo, words: str | None = None) -> None: ...
    @property
    def plain(self) -> bool: ...
    @property
    def degenerate(self) -> bool: ...
    @property
    def crs(self) -> str | None: ...
    @property
    def rect(self) -> tuple[float, float, float, float]: ...
    def has_segment(self, segment: int) -> bool: ...
    def at(self, segment: int, x: int, y: int) -> tuple[float, float]: ...
    def place(self, segment: int, points: npt.NDArray[Any]) -> npt.NDArray[np.float64]: ...
    def find_segment(self, x: float, y: float) -> int | None: ...
    def to_segment(self, segment: int, x: float, y: float) -> tuple[int, int] | None: ...

class Document:
    def write(self, path: _Path, *, sync: bool = True) -> None: ...
    def to_xml(
        self, path: _Path, *, encoding: _Encoding = "shift_jis", sync: bool = True
    ) -> None: ...
    def __bytes__(self) -> bytes: ...
    def __copy__(self) -> Self: ...
    def __deepcopy__(self, memo: dict[Any, Any], /) -> Self: ...

@final
class ObjectIterator(Iterator[AbstractObj]):
    def __next__(self) -> AbstractObj: ...

class Qen(Document):
    @property
    def info(self) -> QenFileInfo: ...
    @property
    def MapData(self) -> QenMapData: ...
    @property
    def segments(self) -> _MeshSegmentSet: ...
    @property
    def __geo_interface__(self) -> dict[str, Any]: ...
    def edit(self) -> QenEdit: ...
    def frame(self, words: str | None = None) -> Frame: ...
    def objects(
        self,
        *,
        layer: _Numbers | None = None,
        kind: _Kind | Iterable[_Kind] | None = None,
        z_id: _Numbers | None = None,
        segment: _Numbers | None = None,
        bbox: Iterable[float] | None = None,
        frame: str | None = None,
    ) -> Iterator[Any]: ...
    def features(self, frame: str | None = None, **filters: Any) -> Iterator[dict[str, Any]]: ...
    def arrays(
        self,
        layer: _Numbers | None = None,
        kind: _Kind | Iterable[_Kind] | None = None,
        degrees: bool = False,
        frame: str | None = None,
    ) -> Arrays: ...

class Zor(Document):
    @property
    def info(self) -> ZorFileInfo: ...
    @property
    def DrawData(self) -> ZorDrawData: ...
    @property
    def attributes(self) -> _DrawAtterSet: ...
    @property
    def infos(self) -> _DrawInfoSet: ...
    @property
    def marks(self) -> _MarkDataSet: ...
    def edit(self) -> ZorEdit: ...
    def style_of(self, z_id: int, scale: float) -> list[Style]: ...

class QenEdit(Document):
    segments: _MeshSegmentSet
    def __init__(self) -> None: ...
    @property
    def info(self) -> QenFileInfo: ...
    @property
    def MapData(self) -> QenMapData: ...
    @property
    def closed(self) -> bool: ...
    def frame(self, words: str | None = None) -> Frame: ...
    def to_map(self) -> Qen: ...
    def close(self) -> None: ...
    def __enter__(self) -> Self: ...
    def __exit__(self, *exception: object) -> None: ...

class ZorEdit(Document):
    infos: _DrawInfoSet
    marks: _MarkDataSet
    def __init__(self) -> None: ...
    @property
    def info(self) -> ZorFileInfo: ...
    @property
    def DrawData(self) -> ZorDrawData: ...
    @property
    def attributes(self) -> _DrawAtterSet: ...
    @property
    def closed(self) -> bool: ...
    def to_draw(self) -> Zor: ...
    def close(self) -> None: ...
    def __enter__(self) -> Self: ...
    def __exit__(self, *exception: object) -> None: ...
