// SPDX-License-Identifier: MIT
#include "errors.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tlk {

void FaultList::Throw() {
    if (m_faults.empty()) return;
    const auto key = [](const SourceFault& fault) { return std::tie(fault.place.file, fault.place.line); };
    std::ranges::stable_sort(m_faults, {}, key);
    const auto isSame = [&key](const SourceFault& a, const SourceFault& b) {
        return key(a) == key(b) && a.text == b.text;
    };
    // The same fault can occur in several planes, with others of the same line between.
    for (auto fault = m_faults.begin(); fault != m_faults.end(); ++fault)
        m_faults.erase(std::remove_if(fault + 1, m_faults.end(),
                                      [&](const SourceFault& other) { return isSame(*fault, other); }),
                       m_faults.end());
    throw SourceError(std::move(m_faults));
}

}  // namespace tlk
