// The guarded build's allocator: a block ends at an inaccessible page, and a freed block is inaccessible.
// Layer 16: tests (Win32 only). Compiled into the guarded build alone.

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <vector>

namespace {

// Volatile, so that the compiler neither joins nor drops the allocations.
template <class T>
T* Opaque(T* pointer) {
    T* volatile through = pointer;
    return through;
}

// Reads the byte, with the fault caught. (ReadProcessMemory would not do: under Wine it passes by the protection.)
bool IsReadable(const void* address) {
    return !IsBadReadPtr(address, 1);
}

struct alignas(64) Wide {
    char bytes[64];
};

} // namespace

TEST(GuardPages, TheByteAfterAnArrayIsInaccessibleWhateverItsLength) {
    for (std::size_t size : {1u, 2u, 3u, 7u, 8u, 13u, 16u, 24u, 4095u, 4096u, 4097u, 100001u}) {
        char* const block = Opaque(new char[size]);
        EXPECT_TRUE(IsReadable(block + size - 1)) << size;
        EXPECT_FALSE(IsReadable(block + size)) << size;
        delete[] block;
    }
}

TEST(GuardPages, TheByteAfterASingleObjectOfWholeEightBytesIsInaccessible) {
    double* const block = Opaque(new double(1));
    EXPECT_FALSE(IsReadable(block + 1));
    delete block;
}

TEST(GuardPages, AFreedBlockIsInaccessible) {
    int* const block = Opaque(new int[10]);
    delete[] block;
    EXPECT_FALSE(IsReadable(block));
    EXPECT_FALSE(IsReadable(block + 9));
}

TEST(GuardPages, AFreshBlockIsNotZero) {
    unsigned char* const block = Opaque(new unsigned char[5]);
    EXPECT_EQ(0xCD, block[0]);
    EXPECT_EQ(0xCD, block[4]);
    delete[] block;
}

TEST(GuardPages, AlignmentIsKept) {
    Wide* const wide = Opaque(new Wide[3]);
    EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(wide) % 64);
    EXPECT_FALSE(IsReadable(wide + 3));
    delete[] wide;
    for (std::size_t size = 1; size < 64; size++) {
        void* const block = ::operator new(size);
        EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(block) % (size % 16 == 0 ? 16 : 8)) << size;
        ::operator delete(block);
    }
}

TEST(GuardPages, AHundredThousandLiveBlocksStillFit) {
    std::vector<int*> blocks;
    for (int i = 0; i < 100000; i++) {
        blocks.push_back(new int(i));
    }
    long long sum = 0;
    for (int* block : blocks) {
        sum += *block;
        delete block;
    }
    EXPECT_EQ(4999950000LL, sum);
    // The guarded ones came free again: the next block has its page.
    double* const next = Opaque(new double(1));
    EXPECT_FALSE(IsReadable(next + 1));
    delete next;
}

TEST(GuardPages, AnImpossibleSizeThrows) {
    volatile std::size_t size = static_cast<std::size_t>(-1) / 2;
    EXPECT_THROW(static_cast<void>(::operator new(size)), std::bad_alloc);
    EXPECT_EQ(nullptr, ::operator new(size, std::nothrow));
}
