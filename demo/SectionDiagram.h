// The diagram of a welded I-section in the parameter view: its scheme, its parameters and its results.
// Layer 13: demo.
#pragma once

#include <afxwin.h>

#include "WeldedSection.h"

class CTextParm;
class CVectorView;

// The diagram is not to scale: a unit is about a pixel. Its values are in the view's document only; they are found by
// their names.
namespace SectionDiagram {

inline constexpr short TypeLocked = 4; // the library refuses to edit these
inline constexpr wchar_t NameOfSection[] = L"name";

void Make(CVectorView& view);
// Writes the section's figures into the results.
void ShowFigures(CVectorView& view, const WeldedSection& section);
// The parameter of that name, or null.
CTextParm* Find(CVectorView& view, const wchar_t* name);
// The size that a parameter shows; null for one that is no size.
double* ValueOf(WeldedSection& section, const wchar_t* name);

} // namespace SectionDiagram
