// SPDX-License-Identifier: MIT
// The product's templates: objects and their creation, the module record, windows.
#include <thread>
#include <utility>
#include <vector>

#include "framework/com_object.h"
#include "framework/window.h"
#include "server_fixture.h"

namespace {

LONG g_locksAtDestruction = 0;
HRESULT g_constructResult = S_OK;

// Adds and releases a reference to itself during its construction, as an object may.
class Probe : public IUnknown, public CComObjectRootEx<CComMultiThreadModel> {
public:
    HRESULT FinalConstruct() {
        AddRef();
        Release();
        return g_constructResult;
    }
    void* FindInterface(REFIID iid) {
        return IsEqualIID(iid, IID_IUnknown) ? static_cast<IUnknown*>(this) : nullptr;
    }

protected:
    ~Probe() { g_locksAtDestruction = _Module.GetLockCount(); }
};

std::string g_calls;

template <char letter, HRESULT result>
HRESULT UpdateRegistry(RegistryAction) {
    g_calls += letter;
    return result;
}
void StartOrStop(bool starting) { g_calls += starting ? "+" : "-"; }
HRESULT NoFactory(CreatorFunction, REFIID, void**) { return E_ACCESSDENIED; }

constexpr RECT kPlace{0, 0, 10, 10};

// Creates another window during its own creation.
class NestingWnd : public CWindowImpl<NestingWnd, CWindow, CWinTraits<WS_POPUP, 0>> {
public:
    ~NestingWnd() override {
        if (m_hWnd) DestroyWindow(m_hWnd);
    }
    static CWndClassInfo& GetWndClassInfo() {
        static CWndClassInfo info = {
            {0, StartWindowProc, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr, TEXT("NestingWnd")}, 0};
        return info;
    }
    BOOL ProcessWindowMessage(HWND window, UINT message, WPARAM, LPARAM, LRESULT&, DWORD) override {
        EXPECT_EQ(window, m_hWnd) << "bound to the wrong object";
        if (message == WM_USER) throw std::bad_alloc();
        if (message == WM_CREATE && m_inner) m_inner->Create(nullptr, kPlace, nullptr, 0, 0);
        return FALSE;
    }

    NestingWnd* m_inner = nullptr;
};

// Runs it on several threads at once and returns all results.
template <typename Function>
auto RunOnThreads(Function function) {
    std::vector<decltype(function())> results(8);
    std::vector<std::thread> threads;
    for (auto& result : results)
        threads.emplace_back([&result, function] { result = function(); });
    for (std::thread& thread : threads)
        thread.join();
    return results;
}

}  // namespace

using FrameworkTest = ServerTest;

TEST_F(FrameworkTest, LibraryStaysLoadedUntilTheObjectIsGone) {
    g_constructResult = S_OK;
    void* plain = nullptr;
    EXPECT_EQ(CreateInstanceOf<Probe>(nullptr, IID_IUnknown, &plain), S_OK);
    auto* outer = static_cast<IUnknown*>(plain);
    void* aggregated = nullptr;
    EXPECT_EQ(CreateInstanceOf<Probe>(outer, IID_IUnknown, &aggregated), S_OK);
    EXPECT_EQ(static_cast<IUnknown*>(aggregated)->Release(), 0u);
    EXPECT_EQ(std::exchange(g_locksAtDestruction, 0), 2);
    EXPECT_EQ(outer->Release(), 0u);
    EXPECT_EQ(std::exchange(g_locksAtDestruction, 0), 1);

    g_constructResult = E_UNEXPECTED;
    EXPECT_EQ(CreateInstanceOf<Probe>(nullptr, IID_IUnknown, &plain), E_UNEXPECTED);
    EXPECT_EQ(plain, nullptr);
    EXPECT_EQ(g_locksAtDestruction, 1) << "an object that cannot be finished is destroyed";
    EXPECT_EQ(CreateInstanceOf<Probe>(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(FrameworkTest, TheModuleUsesItsWholeClassTable) {
    g_calls.clear();
    const CLSID other{1, 2, 3, {}};
    CComClassEntry classes[] = {
        {&CLSID_KeybInput, UpdateRegistry<'r', S_OK>, nullptr, nullptr, nullptr, 0, nullptr, StartOrStop},
        {&CLSID_KeybInput, UpdateRegistry<'f', E_UNEXPECTED>, NoFactory, nullptr, nullptr, 0, nullptr,
         StartOrStop},
        {&other, UpdateRegistry<'r', S_OK>, NoFactory, nullptr, nullptr, 0, nullptr, StartOrStop},
        {},
    };
    CComModule module;
    module.Init(m_library, classes);
    EXPECT_EQ(module.UpdateRegistry(RegistryAction::Register), E_UNEXPECTED);
    void* object = &object;
    EXPECT_EQ(module.GetClassObject(CLSID_KeybInput, IID_IUnknown, &object), E_ACCESSDENIED)
        << "the failure of the first entry that has a factory creator";
    EXPECT_EQ(object, nullptr);
    module.Term();
    EXPECT_EQ(g_calls, "+++rf---");
}

TEST_F(FrameworkTest, ThreadsShareOneFactoryAndOneWindowClass) {
    const auto factories = RunOnThreads([] { return GetFactory(); });
    for (IClassFactory* factory : factories) {
        EXPECT_EQ(factory, factories.front());
        factory->Release();
    }
    const auto atoms = RunOnThreads([] { return NestingWnd::GetWndClassInfo().Register(); });
    EXPECT_NE(atoms.front(), 0);
    EXPECT_EQ(atoms, std::vector<ATOM>(atoms.size(), atoms.front()));
}

TEST_F(FrameworkTest, EachWindowIsBoundToItsOwnObject) {
    NestingWnd failed;
    EXPECT_EQ(failed.Create(nullptr, kPlace, nullptr, WS_CHILD, 0), nullptr) << "a child without a parent";
    NestingWnd inner;
    NestingWnd outer;
    outer.m_inner = &inner;
    const HWND window = outer.Create(nullptr, kPlace, nullptr, 0, 0);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(outer.m_hWnd, window);
    ASSERT_NE(inner.m_hWnd, nullptr);
    EXPECT_NE(inner.m_hWnd, window);
    EXPECT_EQ(failed.m_hWnd, nullptr) << "its record is left";
    EXPECT_EQ(SendMessageW(inner.m_hWnd, WM_USER, 0, 0), 0) << "no exception leaves a window";
}

TEST_F(FrameworkTest, WindowIsBoundOnTheThreadThatCreatesIt) {
    CreateWindowRecord own{};
    CreateWindowRecord foreign{};
    _Module.AddCreateWindowRecord(&own, &own);
    std::thread([&foreign] { _Module.AddCreateWindowRecord(&foreign, &foreign); }).join();
    EXPECT_EQ(_Module.ExtractCreateWindowRecord(), &own) << "although the other came last";
    EXPECT_EQ(_Module.ExtractCreateWindowRecord(), nullptr);
    _Module.RemoveCreateWindowRecord(&foreign);
}
