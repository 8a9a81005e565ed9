// The library's process entry: runs the static initialisers and, on Windows,
// switches off thread notifications. It creates nothing: the client owns the
// manager's lifetime through the two exports.
#if defined(_WIN32)
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE hModule, DWORD dwReason, LPVOID)
{
    if (dwReason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(hModule);
    return TRUE;
}
#endif
