#include "nrv_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

void AppendUtf8(std::string& out, unsigned code) {
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

bool IsHighSurrogate(wchar_t c) {
    return c >= 0xD800 && c < 0xDC00;
}

bool IsLowSurrogate(wchar_t c) {
    return c >= 0xDC00 && c < 0xE000;
}

// Calls `take` with each code point of the text; half a surrogate pair becomes U+FFFD.
template <class Take>
void ForEachCharacter(const CString& text, Take take) {
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t c = text[i];
        if (IsHighSurrogate(c) && i + 1 < text.GetLength() && IsLowSurrogate(text[i + 1])) {
            ++i;
            take(0x10000u + ((static_cast<unsigned>(c) - 0xD800u) << 10) + (static_cast<unsigned>(text[i]) - 0xDC00u));
        } else if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
            take(0xFFFDu);
        } else {
            take(static_cast<unsigned>(c));
        }
    }
}

void AppendHex(std::string& out, unsigned code, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        out += "0123456789abcdef"[(code >> shift) & 0xF];
    }
}

} // namespace

void NrvText::AppendField(std::string& out, const CString& text) {
    CString doubled = text;
    doubled.Replace(L"\\", L"\\\\");
    AppendLine(out, doubled);
}

void NrvText::AppendLine(std::string& out, const CString& text) {
    ForEachCharacter(text, [&out](unsigned c) {
        switch (c) {
        case '\t':
            out += "\\t";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            if (c < 0x20 || c == 0x7F) {
                out += "\\x";
                AppendHex(out, c, 2);
            } else {
                AppendUtf8(out, c);
            }
        }
    });
}

void NrvText::AppendJson(std::string& out, const CString& text) {
    out += '"';
    ForEachCharacter(text, [&out](unsigned c) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20) {
            out += "\\u";
            AppendHex(out, c, 4);
        } else {
            AppendUtf8(out, c);
        }
    });
    out += '"';
}

void NrvText::AppendNumber(std::string& out, double number) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof(digits), number);
    out.append(digits, end.ptr);
}

void NrvText::AppendNumber(std::string& out, float number) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof(digits), number);
    out.append(digits, end.ptr);
}

void NrvText::AppendJson(std::string& out, double number) {
    if (std::isfinite(number)) {
        AppendNumber(out, number);
    } else {
        out += "null";
    }
}

void NrvText::AppendJson(std::string& out, float number) {
    if (std::isfinite(number)) {
        AppendNumber(out, number);
    } else {
        out += "null";
    }
}

void NrvText::AppendCsv(std::string& out, const CString& text) {
    const std::string plain = Utf8(text);
    if (plain.find_first_of(",\"\r\n") == std::string::npos) {
        out += plain;
        return;
    }
    out += '"';
    for (const char c : plain) {
        out += c;
        if (c == '"') {
            out += c;
        }
    }
    out += '"';
}

void NrvText::AppendColor(std::string& out, COLORREF color) {
    out += '#';
    AppendHex(out, static_cast<unsigned>(GetRValue(color)), 2);
    AppendHex(out, static_cast<unsigned>(GetGValue(color)), 2);
    AppendHex(out, static_cast<unsigned>(GetBValue(color)), 2);
}

std::string NrvText::Utf8(const CString& text) {
    std::string out;
    ForEachCharacter(text, [&out](unsigned c) { AppendUtf8(out, c); });
    return out;
}

CString NrvText::SystemText(DWORD error) {
    wchar_t text[512] = {};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                     MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), text, 511, nullptr);
    CString result = text;
    result.TrimRight(L" \r\n.");
    if (result.IsEmpty()) {
        result.Format(L"error %u", error);
    }
    return result;
}

void NrvText::Complain(const CString& file, const CString& reason) {
    std::string line = "nrv: ";
    if (!file.IsEmpty()) {
        AppendLine(line, file);
        line += ": ";
    }
    AppendLine(line, reason);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}
