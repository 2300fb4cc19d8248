// SPDX-License-Identifier: MIT
#include "device/faults.h"

#include "device/device.h"

#include <array>
#include <atomic>
#include <cstdio>

namespace host {
namespace {

// The counters are atomic because any thread may use memory and locks.
struct CallRecord {
    std::atomic<unsigned> count = 0;
    std::atomic<unsigned> failingCount = 0;  // the count that fails; 0 for none, as counts start at 1
};
std::array<CallRecord, static_cast<std::size_t>(Call::Count)> g_calls;

CallRecord& Record(Call call) { return g_calls[static_cast<std::size_t>(call)]; }

}  // namespace

bool CallFails(Call call) {
    CallRecord& record = Record(call);
    // Two threads at once may count as one call; a locked increment would slow down every call.
    const unsigned count = record.count.load(std::memory_order_relaxed) + 1;
    record.count.store(count, std::memory_order_relaxed);
    return count == record.failingCount.load(std::memory_order_relaxed);
}

bool CallFails(Call call, DWORD error) {
    if (!CallFails(call)) return false;
    SetLastError(error);
    return true;
}

void FailCall(Call call, unsigned n) {
    CallRecord& record = Record(call);
    record.failingCount = n == 0 ? 0 : record.count + n;
}

void ClearFaults() {
    for (CallRecord& record : g_calls)
        record.failingCount = 0;
}

unsigned CallCount(Call call) { return Record(call).count; }

void ResetFaults() {
    for (CallRecord& record : g_calls) {
        record.count = 0;
        record.failingCount = 0;
    }
}

// Without a report function the line goes to standard error, so that it is not lost.
void Report(const std::string& line) {
    if (Options().report)
        Options().report(line);
    else
        std::fprintf(stderr, "%s\n", line.c_str());
}

}  // namespace host
