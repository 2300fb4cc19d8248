// SPDX-License-Identifier: MIT
// The server frame as its clients use it: exports, class factory, aggregation, lock count.
#include <functional>

#include "fault_sweep.h"
#include "server_fixture.h"

namespace {

constexpr IID kTypeLibraryInterface = {
    0x6F3A9D27, 0x4B81, 0x4E5C, {0x9A, 0x16, 0xD2, 0xC8, 0xB0, 0x5E, 0x7F, 0x93}};
constexpr CLSID kOtherClass = {0x42429667, 0xae04, 0x11d0, {0xa4, 0xf8, 0x00, 0xaa, 0x00, 0xa7, 0x49, 0xb9}};

void* const kUntouched = reinterpret_cast<void*>(static_cast<ULONG_PTR>(0x5A5A));

// Controls the life of the object that it aggregates; holds the object's own IUnknown.
class OuterUnknown final : public IUnknown {
public:
    virtual ~OuterUnknown() {
        if (m_inner) m_inner->Release();
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        ++m_queries;
        if (!IsEqualIID(iid, IID_IUnknown)) return m_inner->QueryInterface(iid, object);
        *object = static_cast<IUnknown*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() override { return --m_references; }

    IUnknown* m_inner = nullptr;
    ULONG m_references = 1;
    int m_queries = 0;
};

template <typename Interface>
Interface* Query(IUnknown* object, REFIID iid) {
    void* found = nullptr;
    EXPECT_EQ(object->QueryInterface(iid, &found), S_OK);
    return static_cast<Interface*>(found);
}

void ExpectNoOtherInterface(IUnknown* object, REFIID other = kTypeLibraryInterface) {
    void* found = kUntouched;
    EXPECT_EQ(object->QueryInterface(other, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

// The number of references, as returned by Release.
ULONG CountReferences(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

void ExpectLackOfMemoryIsReported(const std::function<HRESULT(void**)>& create) {
    for (test::AllocationSweep sweep; sweep.Next();) {
        void* object = kUntouched;
        sweep.Arm();
        const HRESULT result = create(&object);
        sweep.Disarm();
        EXPECT_EQ(result, sweep.WasHit() ? E_OUTOFMEMORY : S_OK);
        EXPECT_EQ(object == nullptr, sweep.WasHit());
        if (object) static_cast<IUnknown*>(object)->Release();
    }
}

IUnknown* CreateAggregated(IClassFactory* factory, OuterUnknown& outer) {
    void* inner = nullptr;
    EXPECT_EQ(factory->CreateInstance(&outer, IID_IUnknown, &inner), S_OK);
    outer.m_inner = static_cast<IUnknown*>(inner);
    return outer.m_inner;
}

}  // namespace

TEST_F(ServerTest, ClassObjectErrorsLeaveTheOutPointerNull) {
    EXPECT_EQ(DllGetClassObject(CLSID_KeybInput, IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(DllGetClassObject(kOtherClass, IID_IClassFactory, nullptr), E_POINTER);
    for (const auto& [classId, iid, result] :
         {std::tuple(kOtherClass, IID_IClassFactory, CLASS_E_CLASSNOTAVAILABLE),
          {CLSID_KeybInput, IID_IInputMethod, E_NOINTERFACE}}) {
        void* object = kUntouched;
        EXPECT_EQ(DllGetClassObject(classId, iid, &object), result);
        EXPECT_EQ(object, nullptr);
    }
    // The factory is now only in the class table, which does not keep the library loaded.
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST_F(ServerTest, TheFactoryIsCreatedOnceAndCountsItsLocks) {
    IClassFactory* first = GetFactory();
    IClassFactory* second = GetFactory();
    EXPECT_EQ(first, second);
    ExpectNoOtherInterface(first, IID_IInputMethod);
    EXPECT_EQ(Query<IUnknown>(first, IID_IUnknown), first);
    EXPECT_EQ(CountReferences(first), 4u) << "three of this test, one of the class table";
    first->Release();
    first->Release();
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    EXPECT_TRUE(DllMain(m_library, DLL_THREAD_ATTACH, nullptr));
    EXPECT_TRUE(DllMain(m_library, DLL_THREAD_DETACH, nullptr));
    EXPECT_EQ(second->LockServer(TRUE), S_OK);
    EXPECT_EQ(second->LockServer(2), S_OK);
    EXPECT_EQ(second->LockServer(FALSE), S_OK);
    second->Release();
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE) << "locked twice";
    EXPECT_EQ(GetFactory(), first) << "the cached one survives its clients, and threads";
    EXPECT_EQ(first->LockServer(FALSE), S_OK);
    first->Release();
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST_F(ServerTest, FailedCreationLeavesNoObject) {
    IClassFactory* factory = GetFactory();
    OuterUnknown outer;
    EXPECT_EQ(factory->CreateInstance(&outer, IID_IInputMethod, nullptr), E_POINTER);

    for (const auto& [controlling, iid, result] :
         {std::tuple<IUnknown*, IID, HRESULT>(&outer, IID_IInputMethod, CLASS_E_NOAGGREGATION),
          {&outer, kTypeLibraryInterface, CLASS_E_NOAGGREGATION},
          {nullptr, kTypeLibraryInterface, E_NOINTERFACE},
          {nullptr, IID_IClassFactory, E_NOINTERFACE}}) {
        void* object = kUntouched;
        EXPECT_EQ(factory->CreateInstance(controlling, iid, &object), result);
        EXPECT_EQ(object, nullptr);
    }
    EXPECT_EQ(outer.m_references, 1u);
    EXPECT_EQ(outer.m_queries, 0);
    factory->Release();
    EXPECT_EQ(DllCanUnloadNow(), S_OK) << "an object is left";
}

TEST_F(ServerTest, RunningOutOfMemoryIsReportedAndLeavesNoObject) {
    ExpectLackOfMemoryIsReported(
        [](void** object) { return DllGetClassObject(CLSID_KeybInput, IID_IClassFactory, object); });
    IClassFactory* factory = GetFactory();
    OuterUnknown outer;
    for (IUnknown* controlling : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&outer)}) {
        ExpectLackOfMemoryIsReported(
            [&](void** object) { return factory->CreateInstance(controlling, IID_IUnknown, object); });
    }
    factory->Release();
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST_F(ServerTest, PlainObjectHasOnePointerForAllInterfaces) {
    IInputMethod2* object = CreateInputMethod();
    EXPECT_EQ(static_cast<void*>(Query<IUnknown>(object, IID_IUnknown)), object);
    EXPECT_EQ(static_cast<void*>(Query<IInputMethod>(object, IID_IInputMethod)), object);
    EXPECT_EQ(Query<IInputMethod2>(object, IID_IInputMethod2), object);
    EXPECT_EQ(CountReferences(object), 4u);
    ExpectNoOtherInterface(object);
    for (ULONG left : {3u, 2u, 1u, 0u})
        EXPECT_EQ(object->Release(), left);
}

TEST_F(ServerTest, AggregatedObjectBelongsToItsOuterUnknown) {
    IClassFactory* factory = GetFactory();
    OuterUnknown outer;
    IUnknown* inner = CreateAggregated(factory, outer);
    factory->Release();
    EXPECT_EQ(outer.m_references, 1u) << "the outer unknown is not counted";
    EXPECT_EQ(Query<IUnknown>(inner, IID_IUnknown), inner);
    EXPECT_EQ(inner->Release(), 1u);

    auto* object = Query<IInputMethod2>(inner, IID_IInputMethod2);
    EXPECT_EQ(outer.m_references, 2u);
    EXPECT_EQ(CountReferences(inner), 1u) << "an interface counts at the outer unknown alone";
    EXPECT_EQ(Query<IUnknown>(object, IID_IUnknown), &outer) << "identity is the outer unknown's";
    EXPECT_EQ(static_cast<void*>(Query<IInputMethod>(object, IID_IInputMethod)), object);
    EXPECT_EQ(outer.m_references, 4u);
    object->AddRef();
    EXPECT_EQ(outer.m_references, 5u);
    for (int i = 0; i < 4; ++i)
        object->Release();
    EXPECT_EQ(outer.m_references, 1u);
    ExpectNoOtherInterface(inner);
}
