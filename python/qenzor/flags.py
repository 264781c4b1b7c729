"""The numbers in fields that have names. A field takes them, and gives plain integers."""

from __future__ import annotations

from enum import IntEnum, IntFlag


class LabelFlags(IntFlag):
    """CmbLblObj.CtrlFlgs, of which the low four bits are a LabelOrigin."""

    ORIGIN = 0x0F
    VERTICAL = 0x10
    HIDE_TEXT = 0x20
    HIDE_MARK = 0x40


class LabelOrigin(IntEnum):
    """Which point of a label's text stands at its anchor."""

    BOTTOM_LEFT = 1
    BOTTOM_CENTRE = 2
    BOTTOM_RIGHT = 3
    MIDDLE_RIGHT = 4
    TOP_RIGHT = 5
    TOP_CENTRE = 6
    TOP_LEFT = 7
    MIDDLE_LEFT = 8
    CENTRE = 9


class LabelDrawFlags(IntFlag):
    """CmbLblDrawInfo.CtrlFlgs."""

    SHOW_TEXT = 1
    SHOW_MARK = 2


class FontFlags(IntFlag):
    """CmbLblDrawInfo.FontCtrl."""

    SHADED = 1


class FrameKind(IntEnum):
    """CmbLblDrawInfo.FrameCtrl."""

    NONE = 0
    RECTANGLE = 1
    ROUNDED_RECTANGLE = 2
    ELLIPSE = 3


class LineCode(IntEnum):
    """LineDrawInfo.LineCode."""

    SOLID = 0
    DASHES = 1
    DOTS = 2
    DASH_DOT = 3
    DASH_DOT_DOT = 4
