// SPDX-License-Identifier: MIT
#include "fault_sweep.h"

#include <host_control.h>

#include "test_support.h"

namespace test {

bool FaultSweep::Next() {
    if (m_hit) {
        ++m_occurrence;
    } else {
        ++m_kind;
        m_occurrence = 1;
    }
    m_hit = false;
    return m_kind < static_cast<unsigned>(host::Call::Count);
}

void FaultSweep::Arm() {
    const auto call = static_cast<host::Call>(m_kind);
    m_countWhenArmed = host::CallCount(call);
    host::FailCall(call, m_occurrence);
}

void FaultSweep::Disarm() {
    m_hit = host::CallCount(static_cast<host::Call>(m_kind)) - m_countWhenArmed >= m_occurrence;
    host::ClearFaults();
    // The device reports this fault, as it should.
    if (m_hit && static_cast<host::Call>(m_kind) == host::Call::WriteRegistryFile) TakeReports();
}

std::string FaultSweep::Describe() const {
    return "call number " + std::to_string(m_occurrence) + " of kind " + std::to_string(m_kind);
}

}  // namespace test
