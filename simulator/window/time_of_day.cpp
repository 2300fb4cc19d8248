// SPDX-License-Identifier: MIT
#include "time_of_day.h"

#include <ctime>

namespace {

std::tm LocalTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

}  // namespace

std::string TimeOfDay() {
    const std::tm local = LocalTime();
    char text[8];
    std::strftime(text, sizeof text, "%H:%M", &local);
    return text;
}

int MillisecondsToNextMinute() { return (60 - LocalTime().tm_sec) * 1000 + 50; }
