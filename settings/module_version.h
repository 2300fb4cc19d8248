// SPDX-License-Identifier: MIT
// Reads the version resource of a library file.
#pragma once

#include <windows.h>

#include <memory>

#include "framework/wide_string.h"

class CModuleVersion : public tagVS_FIXEDFILEINFO {
public:
    CModuleVersion();
    virtual ~CModuleVersion() = default;
    CModuleVersion(const CModuleVersion&) = delete;
    CModuleVersion& operator=(const CModuleVersion&) = delete;

    // Reads the file's version block; true when its fixed part has the right signature. If the file has no
    // block, the one read before stays.
    bool Load(LPCWSTR path);
    // The string of this name in the table of the block's language; empty if there is none or memory runs
    // out.
    WideString QueryString(LPCWSTR name) const;

    struct Translation {
        WORD language;
        WORD codePage;
    };

private:
    bool ReadBlock(LPCWSTR path);
    bool ReadFixedPart();
    void ReadTranslation();
    WideString PathOf(LPCWSTR name) const;

    std::unique_ptr<BYTE[]> m_pVersionData;
    // Selects the string table. The language is US English until a translation has been read.
    Translation m_Translation{0x0409, 1252};
};
