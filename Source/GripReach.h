// Grips of round kinds and of texts, and lines, known to be far from a point before they are computed.
// Layer 5: drawables.
#pragma once

class CDrawable;
class CGePoint2d;

// Whether no grip of the object lies within the square of `aperture` drawing units around the point. False where that
// is not known: for all other kinds, also for those of hosts, which may have other grips.
bool AreGripsFar(CDrawable* object, const CGePoint2d& point, int aperture);

// Whether the line is farther from the point than `reach`, in drawing units, as its hit test would find. False where
// that is not known: for other kinds, for hidden lines, and for those that are near.
bool IsLineFar(CDrawable* object, const CGePoint2d& point, double reach);
