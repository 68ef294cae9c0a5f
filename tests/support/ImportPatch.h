// Replaces functions that modules of this process import, such as malloc, while it exists. For tests of failures of the
// system: the modules themselves stay as they ship.
// Layer 16: tests.
#pragma once

#include <windows.h>

#include <vector>

// Changes the import tables: a call that was made through a table reaches the replacement, a function pointer taken
// before does not. Not for two threads at once.
class ImportPatch {
public:
    // Patches every loaded module of the project: the DLLs alone, or the test program as well.
    enum Modules { Libraries, LibrariesAndProgram };
    explicit ImportPatch(Modules modules = Libraries);
    // Patches one other module, which must be loaded.
    explicit ImportPatch(LPCWSTR module);
    // Restores the tables.
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    // Replaces every import of `function`, from whatever DLL. Returns the number of tables that had it.
    template <class Function>
    int Replace(const char* function, Function* replacement) {
        return ReplaceAddress(function, reinterpret_cast<void*>(replacement));
    }

private:
    struct Change {
        void** place;
        void* before;
    };

    int ReplaceAddress(const char* function, void* replacement);
    static void Write(void** place, void* value);

    std::vector<HMODULE> m_modules;
    std::vector<Change> m_changes;
};
