#include "host/critical_section.h"

namespace {

constinit SCriticalSection processSection = {PTHREAD_RECURSIVE_MUTEX_INITIALIZER_NP};

}  // namespace

extern "C" {

void InitializeCriticalSection(SCriticalSection* section) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&section->mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

void DeleteCriticalSection(SCriticalSection* section) {
    pthread_mutex_destroy(&section->mutex);
}

void EnterCriticalSection(SCriticalSection* section) {
    pthread_mutex_lock(&section->mutex);
}

void LeaveCriticalSection(SCriticalSection* section) {
    pthread_mutex_unlock(&section->mutex);
}

SCriticalSection* dataCSProc() {
    return &processSection;
}

}  // extern "C"
