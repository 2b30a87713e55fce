// The lock of the operating system under its own names, and the one process-wide lock of the host, which
// guards the lists of listeners.
#pragma once

#include <pthread.h>

extern "C" {

/// A lock that the thread which holds it may enter again. Treat the content as unknown.
struct SCriticalSection {
    pthread_mutex_t mutex;
};

/// Makes a lock usable; every other operation needs this first.
void InitializeCriticalSection(SCriticalSection* section);

/// Ends the life of a lock that nobody holds.
void DeleteCriticalSection(SCriticalSection* section);

/// Waits until no other thread holds the lock and takes it, or takes it once more.
void EnterCriticalSection(SCriticalSection* section);

/// Gives the lock back once; it is free when it was left as often as entered.
void LeaveCriticalSection(SCriticalSection* section);

/// The one process-wide lock. It needs no set-up and is never deleted, so it may be used by static objects
/// before main and at exit.
SCriticalSection* dataCSProc();

}  // extern "C"
