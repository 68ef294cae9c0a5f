// nrv: texts for scripts: UTF-8, fields of plain lines, JSON and CSV, messages.
// Layer 14: tools.
#pragma once

#include <afxwin.h>

#include <string>

namespace NrvText {

// Within a field of a plain line a tab is written \t, a line feed \n, a carriage return \r, any other control character
// \xNN, and a backslash \\.
void AppendField(std::string& out, const CString& text);
// The same for people, with backslashes as they are.
void AppendLine(std::string& out, const CString& text);
void AppendJson(std::string& out, const CString& text);
// Writes null for a number that is not finite: JSON has no word for it.
void AppendJson(std::string& out, double number);
void AppendJson(std::string& out, float number);
// Quoted where commas, quotes or line ends require it; spreadsheets read it back.
void AppendCsv(std::string& out, const CString& text);
// The shortest form that reads back as the same number; "nan" and "inf" for numbers that are not finite.
void AppendNumber(std::string& out, double number);
void AppendNumber(std::string& out, float number);
// "#rrggbb" of a COLORREF.
void AppendColor(std::string& out, COLORREF color);

std::string Utf8(const CString& text);
// The system's text for an error number of Windows, in English.
CString SystemText(DWORD error);
// "nrv: FILE: REASON" on the standard error. An empty file is left out.
void Complain(const CString& file, const CString& reason);

} // namespace NrvText
