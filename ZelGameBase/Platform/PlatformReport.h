// The operating-system services behind the crash, error and promotion
// reports: worker threads, the stack walk and module lookup, the HTTP form
// post, the connection test, the local address and the adapter address, and
// the host executable's version facts. PlatformReportWin32.cpp and
// PlatformReportPosix.cpp are the two implementations, chosen by the build;
// the stack walk and module lookup stand apart in PlatformStack*.cpp, which
// the pure-call handler needs without the rest.
#pragma once

#include "ZelGameBase/StackTrace.h"
#include "ZelGameBase/ZelCrt.h"

// Starts a detached worker running fn(pArgument) through the runtime's
// thread-start function; nothing keeps or waits for it. False when no thread
// could be started: pArgument then still belongs to the caller.
using PlatformThreadFn = unsigned (*)(void* pArgument);
bool PlatformThreadStart(PlatformThreadFn fn, void* pArgument);

// Collects up to nMax code addresses of the current call chain, or, when
// pException is given, of the faulting code it describes (its first address
// is the fault address). Without pException the chain starts at the frame
// that returns to pFirstReturn when that frame is found (the caller passes
// its own return address, so the walk's own frames are left out), else at
// the innermost frame. The walk ends at the first frame that cannot be read
// or whose address is not executable code. Returns the number collected.
int PlatformStackWalk(void** ppAddress, int nMax, const ZelExceptionPointers* pException, const void* pFirstReturn);

// The loaded module holding pAddress: its file name (cut to nNameSize - 1)
// and base. False, with the outputs untouched, when no module holds it.
bool PlatformModuleOfAddress(const void* pAddress, char* szName, int nNameSize, const void** ppBase);

// One HTML form post. The fields are handed to the system's HTTP client the
// way WinINet takes them: szAcceptEntry is one entry of the accept-type list
// (the system prefixes "Accept: " to the list on the wire), szHeader is one
// extra header line. The response is not read. False on any failure; nothing
// is retried or reported.
struct HttpFormPost {
    const char* szServer;
    int nPort;
    const char* szAction;
    const char* szAgent;
    const char* szAcceptEntry;
    const char* szHeader;
    const char* szBody;
};
bool PlatformHttpFormPost(const HttpFormPost& post);

// Outcomes of a connection test, in the order the steps can fail.
enum class ConnectOutcome {
    StartupFailed,    // the socket library would not start
    VersionMismatch,  // it started with another version than 1.1
    SocketFailed,     // no IPv4 stream socket (error code set)
    AddressInvalid,   // the text is not a dotted-quad address
    ConnectFailed,    // the connection was refused or timed out (error code set)
    Connected,
};
// Connects once to szAddress:nPort (no name resolution) and closes again.
// *pnError receives the system's socket error code where the outcome has one.
ConnectOutcome PlatformConnectTest(const char* szAddress, int nPort, int* pnError);

// The first IPv4 address the host's own name resolves to, dotted-quad, cut
// to nSize - 1. False (szOut untouched) when the name or address is unknown.
bool PlatformLocalAddressGet(char* szOut, int nSize);

// Result of the adapter query.
enum class AdapterQuery {
    Unavailable,  // the system's adapter service could not be loaded
    Failed,       // the service answered with an error; pAddress untouched
    Done,         // pAddress holds the last listed adapter's address (if any)
};
// Writes the first six hardware-address bytes of each listed adapter into
// pAddress in turn, so that the last adapter in the system's list wins.
AdapterQuery PlatformAdapterAddressGet(unsigned char* pAddress);

// The host executable's file version "%d.%d.%d.%d" from its version
// resource; empty when it has none.
void PlatformHostFileVersion(char* szOut, int nSize);
// The last-write local time of the host executable, found by its bare file
// name in the working directory. False when it is not there.
bool PlatformHostFileTime(LocalTime* pTime);

// Installs the translator of structured exceptions into C++ exceptions
// (SeException) for the calling thread and returns the one it replaces.
// Where the compiler offers no translator this does nothing and returns null.
void* PlatformSeTranslatorInstall();
void PlatformSeTranslatorRestore(void* pPrevious);
