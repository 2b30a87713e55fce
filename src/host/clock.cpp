#include "host/clock.h"

#include <ctime>
#include <mutex>
#include <optional>

#include "host/local_time_zone.h"

namespace quorvelin {
namespace {

struct Moment {
    std::int64_t seconds;
    int milliseconds;
};

struct ReplacedZone {
    TIME_ZONE_INFORMATION zone;
    std::uint32_t id;
};

constinit std::mutex replacementMutex;
constinit std::optional<Moment> stoppedAt;
constinit std::optional<ReplacedZone> replacedZone;

Moment now() {
    {
        const std::lock_guard lock(replacementMutex);
        if (stoppedAt) {
            return *stoppedAt;
        }
    }
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return {time.tv_sec, static_cast<int>(time.tv_nsec / 1000000)};
}

}  // namespace

void stopClock(std::int64_t seconds, int milliseconds) {
    const std::lock_guard lock(replacementMutex);
    stoppedAt = Moment{seconds, milliseconds};
}

void startClock() {
    const std::lock_guard lock(replacementMutex);
    stoppedAt.reset();
}

void replaceTimeZone(const TIME_ZONE_INFORMATION* zone, std::uint32_t id) {
    const std::lock_guard lock(replacementMutex);
    if (zone != nullptr) {
        replacedZone = ReplacedZone{*zone, id};
    } else {
        replacedZone.reset();
    }
}

}  // namespace quorvelin

extern "C" {

void GetSystemTime(SYSTEMTIME* time) {
    const quorvelin::Moment moment = quorvelin::now();
    *time = quorvelin::calendarFields(moment.seconds);
    time->wMilliseconds = static_cast<std::uint16_t>(moment.milliseconds);
}

std::uint32_t GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone) {
    {
        const std::lock_guard lock(quorvelin::replacementMutex);
        if (quorvelin::replacedZone) {
            *zone = quorvelin::replacedZone->zone;
            return quorvelin::replacedZone->id;
        }
    }
    return quorvelin::localTimeZone(quorvelin::now().seconds, *zone);
}

}  // extern "C"
