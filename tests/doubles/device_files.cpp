// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "device_side.h"
#include "test_support.h"

namespace test {

namespace fs = std::filesystem;

void WriteDeviceFile(const fs::path& path, const std::string& bytes) {
    fs::create_directories((DeviceFolder() / path).parent_path());
    MakeRoomFor(path);
    std::ofstream file(DeviceFolder() / path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    ASSERT_TRUE(file.good()) << path;
}

std::string ReadDeviceFile(const fs::path& path) {
    std::ifstream file(DeviceFolder() / path, std::ios::binary);
    EXPECT_TRUE(file.good()) << path;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

}  // namespace test
