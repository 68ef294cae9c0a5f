#include "SvgText.h"

#include <charconv>
#include <cmath>

namespace {

constexpr unsigned kReplacement = 0xFFFD;

void AppendUtf8(CSvgBuffer& out, unsigned code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// The code point at `i`, which is advanced to its last half.
unsigned CharacterAt(const CString& text, int& i) {
    const unsigned c = text[i];
    if (c >= 0xD800 && c < 0xE000) {
        const unsigned next = i + 1 < text.GetLength() ? text[i + 1] : 0u;
        if (c >= 0xDC00 || next < 0xDC00 || next >= 0xE000) {
            return kReplacement;
        }
        ++i;
        return 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
    }
    if (c == '\t' || c == '\n' || c == '\r') {
        return ' ';
    }
    return c < 0x20 || c == 0x7F || c >= 0xFFFE ? kReplacement : c;
}

void AppendCharacter(CSvgBuffer& out, unsigned c) {
    switch (c) {
    case '&':
        out += "&amp;";
        break;
    case '<':
        out += "&lt;";
        break;
    case '>':
        out += "&gt;";
        break;
    case '"':
        out += "&quot;";
        break;
    default:
        AppendUtf8(out, c);
    }
}

} // namespace

bool SvgText::AppendNumber(CSvgBuffer& out, double number) {
    if (!std::isfinite(number)) {
        return false;
    }
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof(digits), number + 0.0); // Without a sign for -0.
    out.Append(digits, end.ptr);
    return true;
}

void SvgText::AppendInteger(CSvgBuffer& out, long long number) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof(digits), number);
    out.Append(digits, end.ptr);
}

void SvgText::AppendColor(CSvgBuffer& out, COLORREF color) {
    out += '#';
    const BYTE parts[] = {GetRValue(color), GetGValue(color), GetBValue(color)};
    for (const BYTE part : parts) {
        out += "0123456789abcdef"[part >> 4];
        out += "0123456789abcdef"[part & 15];
    }
}

void SvgText::AppendText(CSvgBuffer& out, const CString& text) {
    for (int i = 0; i < text.GetLength(); ++i) {
        AppendCharacter(out, CharacterAt(text, i));
    }
}

void SvgText::AppendFamily(CSvgBuffer& out, const CString& name) {
    out += '\'';
    for (int i = 0; i < name.GetLength(); ++i) {
        const unsigned c = CharacterAt(name, i);
        if (c == '\'' || c == '\\') {
            out += '\\';
        }
        AppendCharacter(out, c);
    }
    out += '\'';
}
