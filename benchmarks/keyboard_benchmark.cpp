// SPDX-License-Identifier: MIT
// The keyboard's costs, as ratios within one run, which vary less between machines than times. Prints the
// ratios after the figures and fails if one exceeds its bound.
#include <benchmark/benchmark.h>
#include <host_control.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>

#include "framework/module.h"
#include "keyboard/keyboard.h"

namespace {

std::size_t g_allocations = 0;

}  // namespace

// Not inlined, or the compiler would complain about malloc with delete.
[[gnu::noinline]] void* operator new(std::size_t bytes) {
    ++g_allocations;
    if (void* memory = std::malloc(bytes)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*);

namespace {

namespace fs = std::filesystem;

constexpr LONG kWidth = 240;
constexpr LONG kHeight = 80;
constexpr int kFurtherSkins = 500;
constexpr POINT kLetterQ{27, 23};

// Receives the keyboard's events and records the number of allocations made by then.
class Callback : public IIMCallback {
public:
    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP SetImInfo(IMINFO*) override { return S_OK; }
    STDMETHODIMP SendVirtualKey(BYTE, DWORD) override { return S_OK; }
    STDMETHODIMP SendCharEvents(UINT, UINT, UINT, UINT*, UINT*) override {
        allocationsAtEvent = g_allocations;
        return S_OK;
    }
    STDMETHODIMP SendString(LPWSTR, DWORD) override { return S_OK; }

    std::size_t allocationsAtEvent = 0;
};

// A device with the library's resources and one skin, in a temporary folder.
class Device {
public:
    Device() {
        std::string pattern = (fs::temp_directory_path() / "tolka-benchmark-XXXXXX").string();
        m_folder = ::mkdtemp(pattern.data());
        fs::create_directories(m_folder / "Windows");
        fs::copy_file(TOLKA_LIBRARY, m_folder / "Windows/tolka.dll");
        fs::copy_file(TOLKA_SKIN, m_folder / "Windows/german.tlk");
        host::StartDevice({m_folder, {240, 320}, [](const std::string& line) { std::puts(line.c_str()); }});
        DllMain(LoadLibraryW(TEXT("\\Windows\\tolka.dll")), DLL_PROCESS_ATTACH, nullptr);
    }
    ~Device() {
        DllMain(nullptr, DLL_PROCESS_DETACH, nullptr);
        host::StopDevice();
        fs::remove_all(m_folder);
    }
    void AddFurtherSkins() {
        for (int i = 0; i < kFurtherSkins; ++i) {
            fs::create_hard_link(m_folder / "Windows/german.tlk",
                                 m_folder / ("Windows/further" + std::to_string(i) + ".tlk"));
        }
    }
    void RemoveFurtherSkins() {
        for (int i = 0; i < kFurtherSkins; ++i)
            fs::remove(m_folder / ("Windows/further" + std::to_string(i) + ".tlk"));
    }

private:
    fs::path m_folder;
};

LRESULT CALLBACK PanelProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT) return DefWindowProcW(window, message, wParam, lParam);
    auto* keyboard = reinterpret_cast<CKeyboard*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    CWindow panel(window);
    keyboard->Paint(dc, &panel);
    EndPaint(window, &paint);
    return 0;
}

// A window that paints a keyboard.
class Panel {
public:
    explicit Panel(CKeyboard& keyboard) {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = PanelProcedure;
        windowClass.lpszClassName = TEXT("BenchmarkPanel");
        RegisterClassW(&windowClass);
        window.m_hWnd = CreateWindowExW(0, TEXT("BenchmarkPanel"), nullptr, WS_POPUP | WS_VISIBLE, 0, 0,
                                        kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(window.m_hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&keyboard));
        UpdateWindow(window.m_hWnd);
    }
    ~Panel() {
        DestroyWindow(window.m_hWnd);
        UnregisterClassW(TEXT("BenchmarkPanel"), nullptr);
    }

    CWindow window{nullptr};
};

void CopyPicture(benchmark::State& state) {
    CKeyboard keyboard;
    keyboard.Init(240, 320);
    Panel panel(keyboard);
    const HDC dc = GetDC(panel.window.m_hWnd);
    for (auto _ : state)
        BitBlt(dc, 0, 0, kWidth, kHeight, keyboard.m_hKbDC, 0, 0, SRCCOPY);
    ReleaseDC(panel.window.m_hWnd, dc);
}
BENCHMARK(CopyPicture);

// Drawing only, in a paint cycle with this invalid rectangle.
void PaintInvalid(benchmark::State& state, const RECT* invalid) {
    CKeyboard keyboard;
    keyboard.Init(240, 320);
    Panel panel(keyboard);
    keyboard.PressKey(kLetterQ, &panel.window, true);
    UpdateWindow(panel.window.m_hWnd);
    InvalidateRect(panel.window.m_hWnd, invalid, FALSE);
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(panel.window.m_hWnd, &paint);
    for (auto _ : state)
        keyboard.Paint(dc, &panel.window);
    EndPaint(panel.window.m_hWnd, &paint);
    keyboard.PressKey(kLetterQ, &panel.window, false);
}

RECT LetterQ() {
    CKeyboard keyboard;
    keyboard.Init(240, 320);
    return keyboard.m_CharLayout.at(82).m_Rects[0];
}

void PaintKeyboard(benchmark::State& state) { PaintInvalid(state, nullptr); }
BENCHMARK(PaintKeyboard);

void PaintOneKey(benchmark::State& state) {
    const RECT key = LetterQ();
    PaintInvalid(state, &key);
}
BENCHMARK(PaintOneKey);

// The same with the platform's part: InvalidateRect, WM_PAINT, BeginPaint and EndPaint.
void PaintMessages(benchmark::State& state, const RECT* invalid) {
    CKeyboard keyboard;
    keyboard.Init(240, 320);
    Panel panel(keyboard);
    keyboard.PressKey(kLetterQ, &panel.window, true);
    for (auto _ : state) {
        InvalidateRect(panel.window.m_hWnd, invalid, FALSE);
        UpdateWindow(panel.window.m_hWnd);
    }
    keyboard.PressKey(kLetterQ, &panel.window, false);
}

void PaintMessageWhole(benchmark::State& state) { PaintMessages(state, nullptr); }
BENCHMARK(PaintMessageWhole);

void PaintMessageOneKey(benchmark::State& state) {
    const RECT key = LetterQ();
    PaintMessages(state, &key);
}
BENCHMARK(PaintMessageOneKey);

void Tap(benchmark::State& state) {
    CKeyboard keyboard;
    keyboard.Init(240, 320);
    Callback callback;
    keyboard.m_pCallback = &callback;
    Panel panel(keyboard);
    std::size_t allocations = 0;
    const auto tap = [&] {
        const std::size_t before = g_allocations;
        keyboard.PressKey(kLetterQ, &panel.window, true);
        keyboard.PressKey(kLetterQ, &panel.window, false);
        allocations += callback.allocationsAtEvent - before;
    };
    tap();
    allocations = 0;
    for (auto _ : state) {
        tap();
        UpdateWindow(panel.window.m_hWnd);
    }
    state.counters["allocations"] = static_cast<double>(allocations);
}
BENCHMARK(Tap);

void InitialiseRepeatedly(benchmark::State& state) {
    CKeyboard keyboard;
    keyboard.Init(240, 320);
    const unsigned before = host::CallCount(host::Call::LoadLibrary);
    std::int64_t count = 0;
    for (auto _ : state) {
        if (!keyboard.Init(240, 320)) state.SkipWithError("Init failed");
        ++count;
    }
    // Each Init loads the file twice: once to check it, once to use it.
    const unsigned loads = host::CallCount(host::Call::LoadLibrary) - before;
    state.counters["loads"] = static_cast<double>(loads) / static_cast<double>(count);
}

Device* g_device = nullptr;

void InitWithOneSkin(benchmark::State& state) { InitialiseRepeatedly(state); }
BENCHMARK(InitWithOneSkin);

void InitWithManySkins(benchmark::State& state) {
    g_device->AddFurtherSkins();
    InitialiseRepeatedly(state);
    g_device->RemoveFurtherSkins();
}
BENCHMARK(InitWithManySkins);

// Keeps the figures for the ratios.
class Reporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        benchmark::ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.aggregate_name == "median" || runs.size() == 1)
                times[run.run_name.function_name] = run.GetAdjustedCPUTime();
            for (const auto& [name, counter] : run.counters)
                counters[run.run_name.function_name + "." + name] = counter.value;
        }
    }

    std::map<std::string, double> times;
    std::map<std::string, double> counters;
};

bool Check(const char* what, double figure, double bound) {
    const bool good = figure <= bound;
    std::printf("%-62s %8.3f  (at most %g)%s\n", what, figure, bound, good ? "" : "  TOO MUCH");
    return good;
}

bool CheckRatios(Reporter& report) {
    std::puts("");
    bool good = Check("full paint / plain copy of the same area",
                      report.times["PaintKeyboard"] / report.times["CopyPicture"], 2);
    good &= Check("paint after a pen-down on one key / full paint",
                  report.times["PaintOneKey"] / report.times["PaintKeyboard"], 0.1);
    std::printf("%-62s %8.3f\n", "the same with the platform's part of the paint cycle",
                report.times["PaintMessageOneKey"] / report.times["PaintMessageWhole"]);
    good &= Check("initialisation among 501 skins / with one",
                  report.times["InitWithManySkins"] / report.times["InitWithOneSkin"], 3);
    good &= Check("loads of a skin file for an initialisation among 501",
                  report.counters["InitWithManySkins.loads"], 2);
    good &= Check("allocations of a tap, from message to event, after the first",
                  report.counters["Tap.allocations"], 0);
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    Device device;
    g_device = &device;
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return CheckRatios(reporter) ? 0 : 1;
}
