// SPDX-License-Identifier: MIT
// Runs the simulator on a device folder, deleted with the test.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

struct SimulatorResult {
    int status = -1;
    std::string trace;   // standard output
    std::string errors;  // standard error
};

// The folder keeps its files from one run to the next.
class SimulatorTest : public testing::Test {
protected:
    SimulatorTest();
    ~SimulatorTest() override;

    // Runs the script, which is file "s" in the current folder, with further options; these may name the
    // script in another way.
    SimulatorResult Run(const std::string& script, const std::string& options = {});
    // The output of the script; a test failure if the exit status is not 0 or there are messages.
    std::string Trace(const std::string& script, const std::string& options = {});
    // Copies the standard skin into a folder of the device.
    void InstallSkin(const std::string& name = "standard", const std::string& folder = "Windows");
    // Makes a folder "skins" with German, German for thumbs and Greek for two screens, and without thumbs for
    // a third one.
    void MakeFewSkins();

    std::filesystem::path Folder() const { return m_folder; }
    std::filesystem::path Device() const { return m_folder / "device"; }

private:
    std::filesystem::path m_folder;
};

// Commands that tap these keys of the upright standard skin: small characters of language 1, a blank for the
// space key, and <shift>, <control>, <umlaut>, <back>, <enter>, <tab>, <escape>, <left>, <up>, <right>,
// <down>.
std::string KeyTaps(const std::string& keys);

// Does the text contain these parts in this order, the first at its beginning and the last at its end? Either
// may be empty. A failure shows the whole text.
testing::AssertionResult HasParts(const std::string& text, const std::vector<std::string>& parts);
testing::AssertionResult Has(const std::string& text, const std::string& part);
// The last line of the trace that begins so; empty if there is none.
std::string LastLine(const std::string& trace, const std::string& beginning);
