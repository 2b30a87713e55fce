#include "quorvelin/deep_stack.h"

#include <pthread.h>

namespace quorvelin::tool {

namespace {

struct Job {
    const std::function<int()>& work;
    int answer = 0;
};

void* performJob(void* argument) {
    Job& job = *static_cast<Job*>(argument);
    job.answer = job.work();
    return nullptr;
}

bool startThread(pthread_t* thread, size_t stackSize, Job* job) {
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return false;
    const bool started = pthread_attr_setstacksize(&attributes, stackSize) == 0 &&
                         pthread_create(thread, &attributes, performJob, job) == 0;
    pthread_attr_destroy(&attributes);
    return started;
}

}  // namespace

int runOnDeepStack(size_t megabytes, const std::function<int()>& work) {
    Job job{work};
    for (; megabytes > 0; megabytes /= 2) {
        pthread_t thread;
        if (!startThread(&thread, megabytes << 20, &job)) continue;
        pthread_join(thread, nullptr);
        return job.answer;
    }
    return work();
}

}  // namespace quorvelin::tool
