// SvgText: numbers, colours and texts as they may stand in an SVG file.
// Layer 8: render.
#pragma once

#include <afxwin.h>

#include <string>

namespace SvgText {

// The shortest form that reads back as the same number, with a point. False, and nothing appended, for NaN and
// infinity.
bool AppendNumber(std::string& out, double number);
void AppendInteger(std::string& out, long long number);
// "#rrggbb" of a COLORREF.
void AppendColor(std::string& out, COLORREF color);
// As character data or as the value of an attribute, in UTF-8. White space becomes a space; half a surrogate pair, and
// what XML has no character for, becomes U+FFFD.
void AppendText(std::string& out, const CString& text);
// As the value of font-family: quoted, so that any name is one name.
void AppendFamily(std::string& out, const CString& name);

} // namespace SvgText
