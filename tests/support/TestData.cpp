#include "TestData.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>

Bytes ReadTestData(const std::string& name) {
    std::ifstream in(std::string(NR_TEST_DATA) + "/" + name, std::ios::binary);
    EXPECT_TRUE(in.good()) << name;
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

int LoneDocument::Load(const Bytes& bytes) {
    // A block of its own, so that the guarded build sees a read after its end.
    std::unique_ptr<BYTE[]> block(new BYTE[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), block.get());
    return document.OpenDocument(block.get(), static_cast<unsigned int>(bytes.size()));
}

int LoneDocument::LoadRaw(const Bytes& bytes) {
    std::unique_ptr<BYTE[]> block(new BYTE[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), block.get());
    document.Reset();
    CMemFile file(1024);
    file.Attach(block.get(), static_cast<UINT>(bytes.size()), 0);
    int cause = -1;
    try {
        CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete, 4096);
        document.ReadData(ar);
        ar.Close();
    } catch (CArchiveException* e) {
        cause = e->m_cause;
        e->Delete();
    }
    file.Detach();
    return cause;
}

Bytes LoneDocument::Store() {
    CMemFile file(1024);
    EXPECT_EQ(1, document.StoreToMemFile(&file));
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    if (!bytes.empty()) {
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    }
    return bytes;
}

Bytes StoreObject(CDrawable& object) {
    CMemFile file(1024);
    {
        CArchive ar(&file, CArchive::store, 4096);
        object.Serialize(ar);
    }
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}
