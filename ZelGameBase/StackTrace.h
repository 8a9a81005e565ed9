// Call-stack texts for fault reports: the return addresses of a few frames,
// each shown as an offset into the module that holds it.
#pragma once

// What a fault handler knows about the fault: laid out as the system's
// EXCEPTION_POINTERS on Windows (exception record, context record). A POSIX
// signal handler fills it with its siginfo_t* and ucontext_t* arguments.
struct ZelExceptionPointers {
    void* pExceptionRecord;
    void* pContextRecord;
};

// Builds the stack text of frames 0 to nFrameCount (a count of 6 gives up to
// seven entries) into szOut, cut to nOutSize - 1 characters. The frames are
// those of the faulting code when pException is given, else the caller's.
// Each entry ends with a blank:
//   "(%s %p:%i) "  module name, offset from its base, frame index, when the
//                  module differs from the previous entry's;
//   "(%p:%i) "     offset and index within the same module;
//   "(unknown %p:%i) " when no module holds the address (the offset is then
//                  from the last module found, absolute at first).
// The walk ends at the first frame that cannot be read.
// Returns szOut; with a null szOut, writes nothing and returns the address of
// the last frame examined. Null when no frame could be read.
void* StackTraceText(int nFrameCount, char* szOut, int nOutSize, const ZelExceptionPointers* pException);

// Finds the loaded module that contains pAddress: its file name (at most 260
// characters, cut to nNameSize - 1) and its base. False, outputs untouched,
// when no module holds the address.
bool ModuleOfAddress(const void* pAddress, char* szName, int nNameSize, const void** ppBase);
