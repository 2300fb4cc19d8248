// SPDX-License-Identifier: MIT
// Makes what can fail fail, one use at a time:
//
//   for (FaultSweep sweep; sweep.Next();) {
//       prepare;
//       sweep.Arm();
//       act;
//       sweep.Disarm();
//       check and clean up;
//   }
//
// FaultSweep goes through every kind of platform call that can fail and AllocationSweep through the program's
// own allocations: the first, the second and so on, until the act ends without meeting the fault.
#pragma once

#include <string>

namespace test {

class FaultSweep {
public:
    // False when everything was tried, or if the platform cannot make calls fail.
    bool Next();
    void Arm();
    void Disarm();
    // Did the act meet the fault?
    bool WasHit() const { return m_hit; }
    std::string Describe() const;

private:
    unsigned m_kind = 0;
    unsigned m_occurrence = 0;
    unsigned m_countWhenArmed = 0;
    bool m_hit = true;
};

// Makes one allocation throw std::bad_alloc. Allocations inside the platform do not fail. Only one sweep at a
// time.
class AllocationSweep {
public:
    bool Next();
    void Arm();
    void Disarm();
    bool WasHit() const { return m_hit; }
    std::string Describe() const;

private:
    unsigned m_occurrence = 0;
    bool m_hit = true;
};

}  // namespace test
