// What the error report and the promotion report share: the HTML form post
// both send, and the fire-and-forget workers they send it from.
#pragma once

// Posts szBody to the form handler szAction on szServer, port 80, as the
// reports always have: agent "MyAgent", the system's proxy settings, verb
// POST, the one accept entry "Accept: */*", the single header
// "Content-Type: application/x-www-form-urlencoded". The response is not
// read; false on any failure, which nobody is told about.
bool ReportFormPost(const char* szServer, const char* szAction, const char* szBody);

// Starts a detached worker that runs fn(pArgument); the worker owns
// pArgument and frees it. False when no thread could be started: pArgument
// then still belongs to the caller.
using ReportWorkerFn = unsigned (*)(void* pArgument);
bool ReportWorkerStart(ReportWorkerFn fn, void* pArgument);

// How many report workers are running now (tests wait for it to reach 0).
int ReportWorkerCount();

// Tests only: posts go to nPort instead of 80 (0 restores 80), so that a
// test can serve them on the loopback interface.
void ReportPortSet(int nPort);
