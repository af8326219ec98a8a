#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>

#include <memory>
#include <type_traits>

// Owners for the handles that Core Foundation and I/O Kit give out. A handle obtained from
// a "Create" or "Copy" call belongs to the caller and is released once, by its holder; a
// handle obtained from a "Get" call is borrowed and is never put in a holder.

struct CFReleaser
{
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

// Holds one reference to a Core Foundation object: CFHolder<CFArrayRef>.
template <typename Ref>
using CFHolder = std::unique_ptr<std::remove_pointer_t<Ref>, CFReleaser>;

// The object as `Ref` when its runtime type is `typeId`, otherwise null. Borrowed: the
// caller still owns (or still borrows) the object exactly as before.
template <typename Ref>
Ref cfCast(CFTypeRef object, CFTypeID typeId)
{
    if (!object || CFGetTypeID(object) != typeId)
        return nullptr;
    return static_cast<Ref>(object);
}

// Holds one reference to an I/O Kit object (a service or an iterator) and releases it.
class IOObjectHolder
{
public:
    explicit IOObjectHolder(io_object_t object = IO_OBJECT_NULL) : m_object(object) {}
    ~IOObjectHolder()
    {
        // A failed release leaves nothing to undo: the reference is gone either way.
        if (m_object != IO_OBJECT_NULL)
            IOObjectRelease(m_object);
    }
    IOObjectHolder(const IOObjectHolder &) = delete;
    IOObjectHolder &operator=(const IOObjectHolder &) = delete;

    io_object_t get() const { return m_object; }
    explicit operator bool() const { return m_object != IO_OBJECT_NULL; }

private:
    io_object_t m_object;
};

// The default main port. I/O Kit documents kIOMainPortDefault (macOS 12) and its older
// name kIOMasterPortDefault as synonyms for the null port, so the null port serves every
// system version without an availability test.
inline constexpr mach_port_t defaultMainPort = MACH_PORT_NULL;
