// SPDX-License-Identifier: MIT
#include "errors.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tlk {

void FaultList::Throw() {
    if (m_Faults.empty()) return;
    const auto key = [](const SourceFault& fault) { return std::tie(fault.place.file, fault.place.line); };
    std::ranges::stable_sort(m_Faults, {}, key);
    const auto isSame = [&key](const SourceFault& a, const SourceFault& b) {
        return key(a) == key(b) && a.text == b.text;
    };
    // The same fault can occur in several planes, with others of the same line between.
    for (auto fault = m_Faults.begin(); fault != m_Faults.end(); ++fault)
        m_Faults.erase(std::remove_if(fault + 1, m_Faults.end(),
                                      [&](const SourceFault& other) { return isSame(*fault, other); }),
                       m_Faults.end());
    throw SourceError(std::move(m_Faults));
}

}  // namespace tlk
