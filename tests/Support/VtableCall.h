// Calls a virtual operation the way the client does: by slot index in the
// object's vtable. On x86-64 and with GCC's layout, a member function is a
// plain function whose first argument is the object.
#pragma once

template <class R, class... Args>
R CallSlot(void* pObject, int nSlot, Args... args)
{
    using Fn = R (*)(void*, Args...);
    void** pVtable = *static_cast<void***>(pObject);
    return reinterpret_cast<Fn>(pVtable[nSlot])(pObject, args...);
}
