// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "library.h"

// References to the library's class factory, as a client of COM holds them.
class Factories {
public:
    explicit Factories(Library& library) : m_library(library) {}
    ~Factories() { ReleaseAll(); }
    Factories(const Factories&) = delete;
    Factories& operator=(const Factories&) = delete;

    struct Result {
        HRESULT result;
        bool same;  // the same factory as before, or the first one
    };
    // Gets the factory and holds one more reference.
    Result Get();
    // Releases one reference; false if none is held.
    bool Release();
    void ReleaseAll();

    // These hold no reference afterwards.
    HRESULT Lock(BOOL lock);
    enum class Aggregation { None, Aggregated };
    HRESULT CreateInstance(REFIID iid, Aggregation aggregation);

private:
    HRESULT Request(IClassFactory** factory);

    Library& m_library;
    std::vector<IClassFactory*> m_held;
};
