#include "LayerManager.h"

#include "MemoryInfo.h"

#include <KxFoundation.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <unordered_set>

IMPLEMENT_SERIAL(CLayerInfo, CSerialable, VERSIONABLE_SCHEMA | 5)
IMPLEMENT_SERIAL(CLayerManager, CSerialable, VERSIONABLE_SCHEMA | 5)

bool CLayerFields::operator==(const CLayerFields& other) const {
    return std::strcmp(m_Name, other.m_Name) == 0 && m_State == other.m_State && m_ColorIndex == other.m_ColorIndex &&
           m_Color == other.m_Color && m_LineType == other.m_LineType &&
           // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): the stored bits count, also of a not-a-number.
           std::memcmp(&m_LineWide, &other.m_LineWide, sizeof m_LineWide) == 0;
}

// ---- CLayerInfo ----------------------------------------------------------------------------------------------------

void CLayerInfo::SetName(const char* name) {
    if (name == nullptr) {
        return;
    }
    const size_t length = std::strlen(name);
    if (length >= sizeof m_Name) {
        KXERROR::PrintInfo(L"图层名称长度超过20", 1);
        return;
    }
    std::memcpy(m_Name, name, length + 1);
}

void CLayerInfo::Serialize(CArchive& ar) {
    CSerialable::Serialize(ar);
    if (ar.IsStoring()) {
        const int length = static_cast<int>(std::strlen(m_Name));
        ar << static_cast<int>(kCurrentSchema) << length;
        ar.Write(m_Name, static_cast<UINT>(length));
        ar << m_State << m_ColorIndex << m_Color << m_LineType << m_LineWide;
        return;
    }
    int length = 0;
    if (IsCurrentForm(ar)) {
        int version = 0;
        ar >> version;
    }
    ar >> length;
    if (length < 0) {
        AfxThrowArchiveException(CArchiveException::badIndex);
    }
    char name[sizeof m_Name] = {};
    const UINT kept = static_cast<UINT>(std::min(length, static_cast<int>(sizeof m_Name) - 1));
    if (ar.Read(name, kept) != kept) {
        AfxThrowArchiveException(CArchiveException::endOfFile);
    }
    for (UINT left = static_cast<UINT>(length) - kept; left > 0;) {
        char dropped[512];
        const UINT part = std::min<UINT>(left, sizeof dropped);
        if (ar.Read(dropped, part) != part) {
            AfxThrowArchiveException(CArchiveException::endOfFile);
        }
        left -= part;
    }
    std::memcpy(m_Name, name, sizeof m_Name);
    ar >> m_State >> m_ColorIndex >> m_Color >> m_LineType >> m_LineWide;
}

// ---- CLayerManager -------------------------------------------------------------------------------------------------

CLayerManager::CLayerManager() {
    AddLayer("Layer 0");
}

CLayerManager::~CLayerManager() {
    RemoveAll();
}

int CLayerManager::AddLayer(const char* name) {
    const int index = GetLayerCount();
    if (index > m_MaxLayer) {
        return -1;
    }
    auto owned = std::make_unique<CLayerInfo>();
    CLayerInfo* layer = owned.get();
    m_Layers.SetAtGrow(index, layer);
    owned.release();
    KX_ADD_MEMORY(layer);
    layer->m_State = 1;
    layer->SetName(name);
    return index;
}

CLayerInfo* CLayerManager::GetLayerInfo(int index) {
    return index >= GetLayerCount() ? nullptr : m_Layers.GetAt(index);
}

void CLayerManager::RemoveAll() {
    for (INT_PTR i = 0; i < m_Layers.GetSize(); ++i) {
        CLayerInfo* layer = m_Layers[i];
        KX_REMOVE_MEMORY(layer);
        delete layer;
    }
    m_Layers.RemoveAll();
}

CLayerTable CLayerManager::GetTable() const {
    CLayerTable table;
    table.maxLayer = m_MaxLayer;
    table.flag = m_LayerFlag;
    for (INT_PTR i = 0; i < m_Layers.GetSize(); ++i) {
        table.layers.push_back(*m_Layers[i]);
    }
    return table;
}

bool CLayerManager::IsAs(const CLayerTable& table) const {
    bool same = m_MaxLayer == table.maxLayer && m_LayerFlag == table.flag &&
                m_Layers.GetSize() == static_cast<INT_PTR>(table.layers.size());
    for (INT_PTR i = 0; same && i < m_Layers.GetSize(); ++i) {
        same = *m_Layers[i] == table.layers[static_cast<size_t>(i)];
    }
    return same;
}

void CLayerManager::PutBack(const CLayerTable& table) {
    const INT_PTR present = m_Layers.GetSize();
    const INT_PTR count = static_cast<INT_PTR>(table.layers.size());
    std::vector<std::unique_ptr<CLayerInfo>> added;
    for (INT_PTR i = present; i < count; ++i) {
        added.push_back(std::make_unique<CLayerInfo>());
    }
    for (INT_PTR i = count; i < present; ++i) {
        KX_REMOVE_MEMORY(m_Layers[i]);
        delete m_Layers[i];
    }
    m_Layers.SetSize(count); // The last statement that may throw, and only where the table grows.
    for (INT_PTR i = 0; i < count; ++i) {
        if (i >= present) {
            m_Layers[i] = added[static_cast<size_t>(i - present)].release();
            KX_ADD_MEMORY(m_Layers[i]);
        }
        static_cast<CLayerFields&>(*m_Layers[i]) = table.layers[static_cast<size_t>(i)];
    }
    m_MaxLayer = table.maxLayer;
    m_LayerFlag = table.flag;
}

void CLayerManager::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << m_MaxLayer << m_LayerFlag << GetLayerCount();
        for (INT_PTR i = 0; i < m_Layers.GetSize(); ++i) {
            ar.WriteObject(m_Layers[i]);
        }
        return;
    }
    RemoveAll();
    int count = 0;
    ar >> m_MaxLayer >> m_LayerFlag >> count;
    std::unordered_set<const CObject*> seen;
    for (int i = 0; i < count; ++i) {
        auto* layer = static_cast<CLayerInfo*>(ar.ReadObject(RUNTIME_CLASS(CLayerInfo)));
        if (layer == nullptr || seen.count(layer) != 0) {
            // A null layer, or one that is in the table already: taking it again would free it twice.
            AfxThrowArchiveException(CArchiveException::badIndex);
        }
        std::unique_ptr<CLayerInfo> owned(layer);
        seen.insert(layer);
        m_Layers.Add(layer);
        KX_ADD_MEMORY(owned.release());
    }
}
