// SvgText: numbers, colours and texts in the form that an SVG file takes.
// Layer 8: render.
#pragma once

#include <afxwin.h>

#include <cstring>
#include <vector>

// Bytes that grow at their end. Not std::string: in the guarded build every unit that uses it has a copy of its
// functions, which would be exported for the tests and collide with the tests' own.
class CSvgBuffer {
public:
    void operator+=(char c) { m_Bytes.push_back(c); }
    void operator+=(const char* text) { Append(text, text + std::strlen(text)); }
    void Append(const char* begin, const char* end) { m_Bytes.insert(m_Bytes.end(), begin, end); }
    // Drops what was appended since the size was `size`.
    void CutTo(size_t size) { m_Bytes.resize(size); }
    size_t Size() const { return m_Bytes.size(); }
    const char* Data() const { return m_Bytes.data(); }

private:
    std::vector<char> m_Bytes;
};

namespace SvgText {

// The shortest form that reads back as the same number, with a point. False, and nothing appended, for NaN and
// infinity.
bool AppendNumber(CSvgBuffer& out, double number);
void AppendInteger(CSvgBuffer& out, long long number);
// "#rrggbb" of a COLORREF.
void AppendColor(CSvgBuffer& out, COLORREF color);
// As character data or as the value of an attribute, in UTF-8. White space becomes a space; half a surrogate pair, and
// what XML has no character for, becomes U+FFFD.
void AppendText(CSvgBuffer& out, const CString& text);
// As the value of font-family: quoted, so that any name is one name.
void AppendFamily(CSvgBuffer& out, const CString& name);

} // namespace SvgText
