// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "library.h"

// References to the library's class factory that a client of COM might hold.
class Factories {
public:
    explicit Factories(Library& library) : m_library(library) {}
    ~Factories() { ReleaseAll(); }
    Factories(const Factories&) = delete;
    Factories& operator=(const Factories&) = delete;

    struct Answer {
        HRESULT result;
        bool same;  // the factory that is held already, or the first one
    };
    // Asks for the factory and holds one more reference.
    Answer Get();
    // Gives one reference back; false when none is held.
    bool Release();
    void ReleaseAll();

    // These hold no reference afterwards.
    HRESULT Lock(BOOL lock);
    enum class Aggregation { None, Aggregated };
    HRESULT CreateInstance(REFIID iid, Aggregation aggregation);

private:
    HRESULT Ask(IClassFactory** factory);

    Library& m_library;
    std::vector<IClassFactory*> m_held;
};
