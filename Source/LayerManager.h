// The layer table of a document, from which objects with by-layer attributes read when they draw.
// Layer 5: drawables.
#pragma once

#include "Serialable.h"

#include <afxtempl.h>

#include <vector>

// What a layer consists of.
struct CLayerFields {
    char m_Name[21] = {};    // 8-bit characters, filled up with zeros.
    int m_State = 1;         // Stored and loaded; the library does not use it.
    int m_ColorIndex = 137;  // Of the colour table, or -2.
    DWORD m_Color = 0;       // COLORREF, used with index -2.
    short m_LineType = 0;    // GDI pen style.
    float m_LineWide = 1.0f; // Drawing units, or pixels for an object with a locked width.

    bool operator==(const CLayerFields& other) const; // Of all fields; the widths bit by bit.
};

// One layer.
class CLayerInfo : public CSerialable, public CLayerFields {
    DECLARE_SERIAL(CLayerInfo)
public:
    CLayerInfo() = default;

    // At most 20 bytes; a longer name is refused with a message and the old one stays. Null is ignored.
    void SetName(const char* name);
    const char* GetName() const { return m_Name; } // Valid as long as the layer.

    // Of a longer name in a file the first 20 bytes are kept; a negative length raises the archive's exception.
    void Serialize(CArchive& ar) override;
};

// The values of a whole layer table.
struct CLayerTable {
    int maxLayer = 0;                 // The limit of AddLayer.
    int flag = 0;                     // Stored and loaded; the library does not use it.
    std::vector<CLayerFields> layers; // In the order of their indices.
};

// A new document has the one layer "Layer 0". Owns its layers.
class CLayerManager : public CSerialable {
    DECLARE_SERIAL(CLayerManager)
public:
    CLayerManager();
    ~CLayerManager() override;

    // Compatibility 65: a count equal to the limit still passes.
    // The new index, or -1 when there are more layers than the limit of 100: with exactly 100 one more is added.
    int AddLayer(const char* name);
    // Null at or above the count; a negative index raises the invalid-argument exception.
    CLayerInfo* GetLayerInfo(int index);
    int GetLayerCount() const { return static_cast<int>(m_Layers.GetSize()); } // 1 in a new document.
    void RemoveAll();                                                          // Frees all layers.

    // For a history: a copy of the values, whether they still are the same, and putting them back. Existing layers keep
    // their addresses; missing ones are made, surplus ones freed. When PutBack throws, nothing has changed.
    CLayerTable GetTable() const;
    bool IsAs(const CLayerTable& table) const;
    void PutBack(const CLayerTable& table);

    // Without the version word that other classes begin with. Documents do not store their layers: this is for hosts.
    void Serialize(CArchive& ar) override;

private:
    int m_MaxLayer = 100;
    int m_LayerFlag = 1; // Stored and loaded; the library does not use it.
    CArray<CLayerInfo*, CLayerInfo*&> m_Layers;
};
