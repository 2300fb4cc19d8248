// SPDX-License-Identifier: MIT
// Commands for the library: COM and registration.
#include "commands.h"
#include "device_setup.h"
#include "script.h"
#include "session.h"

namespace {

void SetUp(Session& session, const Arguments&) { SetUpDevice(session.GetLibrary()); }

void Register(Session& session, const Arguments&) {
    session.GetTrace().WriteCall("Register", session.GetLibrary().Register());
}

void Unregister(Session& session, const Arguments&) {
    session.GetTrace().WriteCall("Unregister", session.GetLibrary().Unregister());
}

void FactoryGet(Session& session, const Arguments&) {
    const Factories::Result answer = session.GetFactories().Get();
    session.GetTrace().WriteCall("Factory", answer.result, answer.same ? " same=1" : " same=0");
}

void FactoryRelease(Session& session, const Arguments&) {
    if (!session.GetFactories().Release()) Note("No reference to the factory is held.");
}

template <BOOL lock>
void FactoryLock(Session& session, const Arguments&) {
    session.GetTrace().WriteCall("LockServer", session.GetFactories().Lock(lock));
}

// Its failures are intended by tests and do not change the exit status.
void FactoryCreate(Session& session, const Arguments& arguments) {
    IID iid;
    if (FAILED(CLSIDFromString(arguments.Wide(0).c_str(), &iid)))
        throw ScriptError("\"" + arguments.Text(0) + "\" is not an identifier in braces");
    const bool aggregated = arguments.Count() == 2;
    if (aggregated && arguments.Text(1) != "aggregated")
        throw ScriptError('"' + arguments.Text(1) + R"(" is not "aggregated")");
    const HRESULT result = session.GetFactories().CreateInstance(
        iid, aggregated ? Factories::Aggregation::Aggregated : Factories::Aggregation::None);
    session.GetTrace().Write("CreateInstance " + Hexadecimal(static_cast<DWORD>(result)));
}

void Unloadable(Session& session, const Arguments&) {
    session.GetTrace().WriteCall("CanUnloadNow", session.GetLibrary().CanUnloadNow());
}

void Unload(Session& session, const Arguments&) {
    session.RequireNoCall();
    session.Sip().ReleaseInputMethod();
    session.GetFactories().ReleaseAll();
    session.GetTrace().WriteCall("Unload", session.GetLibrary().Unload());
}

void Objects(Session& session, const Arguments&) {
    const host::LiveHandles live = host::CountHandles();
    session.GetTrace().Write(
        "Objects bitmaps=" + std::to_string(live.bitmaps) + " dcs=" + std::to_string(live.dcs) +
        " fonts=" + std::to_string(live.fonts) + " windows=" + std::to_string(live.windows) +
        " modules=" + std::to_string(live.modules) + " keys=" + std::to_string(live.keys) +
        " finds=" + std::to_string(live.finds) + " lists=" + std::to_string(live.lists));
}

constexpr Command kCommands[] = {
    {"setup", "", 0, 0, SetUp},
    {"register", "", 0, 0, Register},
    {"unregister", "", 0, 0, Unregister},
    {"factory get", "", 0, 0, FactoryGet},
    {"factory release", "", 0, 0, FactoryRelease},
    {"factory lock", "", 0, 0, FactoryLock<TRUE>},
    {"factory unlock", "", 0, 0, FactoryLock<FALSE>},
    {"factory create", "IID [aggregated]", 1, 2, FactoryCreate},
    {"unloadable", "", 0, 0, Unloadable},
    {"unload", "", 0, 0, Unload},
    {"objects", "", 0, 0, Objects},
};

}  // namespace

std::span<const Command> LibraryCommands() { return kCommands; }
