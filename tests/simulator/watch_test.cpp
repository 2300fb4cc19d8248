// SPDX-License-Identifier: MIT
// `tlk watch`, which builds a source and shows it in the simulator's window whenever it is saved.
#include <chrono>
#include <csignal>
#include <fstream>
#include <regex>
#include <thread>

#include "desktop.h"
#include "simulator_run.h"

namespace fs = std::filesystem;

namespace {

const std::string kSource = "screens = [\"240x320\"]\n[portrait]\nrows = [\"q w shift space back enter\"]\n";

TEST_F(SimulatorTest, WatchBuildsSavedSourcesAndKeepsTheLastGoodSkin) {
    Desktop desktop(Folder());
    desktop.Enter();
    ASSERT_TRUE(desktop.IsReady());
    const fs::path source = Folder() / "mine.toml";
    // As editors do: replaces the file.
    const auto save = [&](const std::string& text) {
        std::ofstream(Folder() / "new") << text;
        fs::rename(Folder() / "new", source);
    };
    const auto awaits = [this](const std::string& text) {
        return Await([&] { return ReadText(Folder() / "out").find(text) != std::string::npos; });
    };
    const auto countBuilt = [this] {
        const std::string out = ReadText(Folder() / "out");
        const std::regex built("mine.toml: built");
        return std::distance(std::sregex_iterator(out.begin(), out.end(), built), {});
    };
    save(kSource);
    std::ofstream(Folder() / "mine.tlk") << "an older skin of this source";
    setenv("TMPDIR", Folder().c_str(), 1);
    Process watch({TLK, "watch", source.string(), "--simulator", SIMULATOR}, Folder(), Folder() / "out",
                  Folder() / "err");
    unsetenv("TMPDIR");
    ASSERT_TRUE(awaits("mine.toml: built")) << ReadText(Folder() / "out") << ReadText(Folder() / "err");
    EXPECT_TRUE(Await([&] { return desktop.WindowPlace("Tolka").width > 0; }));
    save(kSource + "[labels]\nentr = \"E\"\n");
    EXPECT_TRUE(awaits("mine.toml:5: there is no function key 'entr': did you mean 'enter'?"));
    EXPECT_TRUE(awaits("not built, the last good skin stays"));
    save("palette = \"mine-colours.toml\"\n" + kSource);
    EXPECT_TRUE(awaits("mine-colours.toml: cannot be read"));
    std::ofstream(Folder() / "mine-colours.toml") << "letter = \"#707070\"\n";
    EXPECT_TRUE(awaits("hard to read")) << "a file that the source uses";
    // The files that a build itself reads and writes do not cause another build.
    save(kSource);
    EXPECT_TRUE(Await([&] { return countBuilt() == 3; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(watch.End(SIGINT), 0);
    EXPECT_EQ(countBuilt(), 3);
    EXPECT_FALSE(Has(ReadText(Folder() / "out"), "is a part of")) << "a source has no such name";
    for (const auto& entry : fs::directory_iterator(Folder()))
        EXPECT_FALSE(Has(entry.path().filename().string(), "tlk-"));
}

}  // namespace
