// SPDX-License-Identifier: MIT
// Handle tables. A handle has 32 bits: kind (4), generation (12), slot (16). So a stale, null or wrong-typed
// handle never resolves to an object. Kinds are below 8, which avoids the predefined registry keys.
#pragma once

#include <host_control.h>

#include "device/faults.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace host {

enum class HandleKind : std::uint32_t { Gdi = 1, Window = 2, Module = 3, Key = 4, Find = 5, ImageList = 6 };

// The owner of handles that are created now (see PlatformScope).
enum class HandleOwner : std::uint8_t { Product, Platform };
HandleOwner CurrentOwner();

// The typed handle of a table value.
template <typename Handle>
Handle ToHandle(std::uint32_t value) {
    return reinterpret_cast<Handle>(static_cast<std::uintptr_t>(value));
}

template <typename Object, HandleKind kind>
class HandleTable {
public:
    // Owns the object until Close. ToHandle turns the value into any handle type; 0 and
    // ERROR_NOT_ENOUGH_MEMORY if the table is full.
    std::uint32_t Open(std::unique_ptr<Object> object) {
        std::uint32_t slot;
        if (m_free.empty()) {
            slot = static_cast<std::uint32_t>(m_slots.size());
            if (slot > 0xFFFF) return Fail(ERROR_NOT_ENOUGH_MEMORY, 0u);
            m_slots.emplace_back();
        } else {
            slot = m_free.back();
            m_free.pop_back();
        }
        m_slots[slot].object = std::move(object);
        m_slots[slot].owner = CurrentOwner();
        return Value(slot);
    }

    // Null if the value is no valid handle of this table.
    Object* Find(std::uintptr_t value) const {
        if ((value >> 28) != static_cast<std::uintptr_t>(kind)) return nullptr;
        const std::size_t slot = value & 0xFFFF;
        if (slot >= m_slots.size() || ((value >> 16) & 0xFFF) != m_slots[slot].generation) return nullptr;
        return m_slots[slot].object.get();
    }
    Object* Find(const void* handle) const { return Find(reinterpret_cast<std::uintptr_t>(handle)); }

    // The same, and ERROR_INVALID_HANDLE if there is none.
    Object* Require(const void* handle) const {
        Object* found = Find(handle);
        return found ? found : Fail(ERROR_INVALID_HANDLE, found);
    }

    // Removes and returns the object; null if there is none. The handle becomes stale.
    std::unique_ptr<Object> Close(const void* handle) {
        const auto value = reinterpret_cast<std::uintptr_t>(handle);
        if (!Find(value)) return nullptr;
        Slot& slot = m_slots[value & 0xFFFF];
        slot.generation = (slot.generation + 1) & 0xFFF;
        m_free.push_back(static_cast<std::uint32_t>(value & 0xFFFF));
        return std::move(slot.object);
    }

    // Calls visit(handle value, object, owner) for each live object, in slot order.
    template <typename Visitor>
    void ForEach(Visitor visit) const {
        for (std::uint32_t slot = 0; slot < m_slots.size(); ++slot)
            if (m_slots[slot].object) visit(Value(slot), *m_slots[slot].object, m_slots[slot].owner);
    }

    // The number of the product's live objects.
    int Count() const {
        int count = 0;
        ForEach([&](std::uint32_t, const Object&, HandleOwner owner) {
            if (owner == HandleOwner::Product) ++count;
        });
        return count;
    }

    // All handles become stale.
    void CloseAll() {
        ForEach([this](std::uint32_t value, const Object&, HandleOwner) { Close(ToHandle<void*>(value)); });
    }

private:
    struct Slot {
        std::unique_ptr<Object> object;
        std::uint32_t generation = 0;
        HandleOwner owner = HandleOwner::Product;
    };

    std::uint32_t Value(std::uint32_t slot) const {
        return (static_cast<std::uint32_t>(kind) << 28) | (m_slots[slot].generation << 16) | slot;
    }

    std::vector<Slot> m_slots;
    std::vector<std::uint32_t> m_free;
};

}  // namespace host
