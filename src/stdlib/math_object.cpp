#include "stdlib/math_object.h"

#include <cmath>
#include <cstdlib>

#include "foundation/number_text.h"
#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "objects/member_request.h"

namespace quorvelin {

void JSMath::className(BString& out, JSContext*, JSObject*) {
    out = nameText(WellKnownName::Math);
}

// ---- The constants ----

double JSMath::getE(JSObject*) {
    return exp(1.0);
}
double JSMath::getLN2(JSObject*) {
    return log(2.0);
}
double JSMath::getLN10(JSObject*) {
    return log(10.0);
}
double JSMath::getLOG2E(JSObject*) {
    return 1.0 / log(2.0);
}
double JSMath::getLOG10E(JSObject*) {
    return 1.0 / log(10.0);
}
double JSMath::getPI(JSObject*) {
    return 3.141592653589793;
}
double JSMath::getSQRT1_2(JSObject*) {
    return 1.0 / sqrt(2.0);
}
double JSMath::getSQRT2(JSObject*) {
    return sqrt(2.0);
}

// ---- The functions on doubles ----

double JSMath::acos(double x) {
    return std::acos(x);
}
double JSMath::atan(double x) {
    return std::atan(x);
}
double JSMath::cos(double x) {
    return std::cos(x);
}
double JSMath::log(double x) {
    return std::log(x);
}
double JSMath::sin(double x) {
    return std::sin(x);
}
double JSMath::sqrt(double x) {
    return std::sqrt(x);
}
double JSMath::pow(double a, double b) {
    return std::pow(a, b);
}

// Quirk: of the number 0 this is -0, which prints "-0".
double JSMath::abs(double x) {
    return x <= 0.0 ? -x : x;
}

// Quirk: never negative, so asin(-1) is asin(1).
double JSMath::asin(double x) {
    return std::acos(std::sqrt(1.0 - x * x));
}

// Quirk: the arguments stand the other way round than usual, and the quadrant is lost in the division.
double JSMath::atan2(double a, double b) {
    return std::atan(b / a);
}

// Quirk: what the cut to 32 bits changed goes up by one, also below zero: ceil(-1.5) is 0.
double JSMath::ceil(double x) {
    const double whole = truncateToInt32(x);
    return whole == x ? whole : whole + 1.0;
}

double JSMath::floor(double x) {
    const double whole = truncateToInt32(x);
    if (whole == x) return whole;
    return x <= 0.0 ? truncateToInt32(x - 1.0) : whole;
}

// Quirk: a half goes away from zero.
double JSMath::round(double x) {
    return truncateToInt32(x <= 0.0 ? x - 0.5 : x + 0.5);
}

// In the widest type that there is, and rounded once.
double JSMath::exp(double x) {
    return static_cast<double>(std::exp(static_cast<long double>(x)));
}

double JSMath::max(double a, double b) {
    return a > b ? a : b;
}
double JSMath::min(double a, double b) {
    return a < b ? a : b;
}

// Quirk: the scale is one divided by 32767, so that 1 itself can occur. Nothing seeds the generator.
double JSMath::random() {
    return std::rand() % 32768 * 3.051850947599719e-05;
}

// Quirk: the division is that of script numbers, whose not-a-number holds 0. So what ordinary division makes
// no number of, as sine and cosine of an infinity, gives 0.
double JSMath::tan(double x) {
    return JSNumberValue::of(std::sin(x)).divide(JSNumberValue::of(std::cos(x))).value;
}

// ---- Reading their arguments ----

namespace {

template <double (JSMath::*compute)(double)>
double computeWithOne(JSMath& self, JSObject* args, JSContext* ctx, JSObject* receiver) {
    double x = 0.0;
    return JSObject::argNumber(args, 0, x, ctx, receiver) ? (self.*compute)(x) : 0.0;
}

// Quirk: without a second argument the result is 0, also that of max(1).
template <double (JSMath::*compute)(double, double)>
double computeWithTwo(JSMath& self, JSObject* args, JSContext* ctx, JSObject* receiver) {
    double a = 0.0;
    double b = 0.0;
    if (!JSObject::argNumber(args, 0, a, ctx, receiver)) return 0.0;
    return JSObject::argNumber(args, 1, b, ctx, receiver) ? (self.*compute)(a, b) : 0.0;
}

}  // namespace

double JSMath::absArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::abs>(*this, args, ctx, receiver);
}
double JSMath::acosArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::acos>(*this, args, ctx, receiver);
}
double JSMath::asinArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::asin>(*this, args, ctx, receiver);
}
double JSMath::atanArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::atan>(*this, args, ctx, receiver);
}
double JSMath::atan2Arguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithTwo<&JSMath::atan2>(*this, args, ctx, receiver);
}
double JSMath::ceilArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::ceil>(*this, args, ctx, receiver);
}
double JSMath::cosArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::cos>(*this, args, ctx, receiver);
}
double JSMath::floorArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::floor>(*this, args, ctx, receiver);
}
double JSMath::expArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::exp>(*this, args, ctx, receiver);
}
double JSMath::logArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::log>(*this, args, ctx, receiver);
}
double JSMath::maxArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithTwo<&JSMath::max>(*this, args, ctx, receiver);
}
double JSMath::minArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithTwo<&JSMath::min>(*this, args, ctx, receiver);
}
double JSMath::powArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithTwo<&JSMath::pow>(*this, args, ctx, receiver);
}
double JSMath::randomArguments(JSObject*, JSContext*, JSObject*) {
    return random();
}
double JSMath::roundArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::round>(*this, args, ctx, receiver);
}
double JSMath::sinArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::sin>(*this, args, ctx, receiver);
}
double JSMath::sqrtArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::sqrt>(*this, args, ctx, receiver);
}
double JSMath::tanArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return computeWithOne<&JSMath::tan>(*this, args, ctx, receiver);
}

// ---- The members ----

namespace {

template <double (JSMath::*constant)(JSObject*)>
JSObject* getConstant(JSMath& self, JSMemberRequest& request) {
    return request.ctx->makeNumber(JSNumberValue::of((self.*constant)(request.receiver)), request.receiver);
}

// A write to a constant is ignored without a word.
JSObject* ignoreWrite(JSMath&, JSMemberRequest&) {
    return nullptr;
}

template <double (JSMath::*function)(JSObject*, JSContext*, JSObject*)>
JSObject* callFunction(JSMath& self, JSMemberRequest& request) {
    const double result = (self.*function)(request.argument, request.ctx, request.receiver);
    if (request.ctx->isStopped()) return nullptr;
    return request.ctx->makeNumber(JSNumberValue::of(result), request.receiver);
}

constexpr NativeMember<JSMath> kMembers[] = {
    {WellKnownName::E, JSValueType::number, getConstant<&JSMath::getE>, ignoreWrite, nullptr},
    {WellKnownName::LN2, JSValueType::number, getConstant<&JSMath::getLN2>, ignoreWrite, nullptr},
    {WellKnownName::LN10, JSValueType::number, getConstant<&JSMath::getLN10>, ignoreWrite, nullptr},
    {WellKnownName::LOG2E, JSValueType::number, getConstant<&JSMath::getLOG2E>, ignoreWrite, nullptr},
    {WellKnownName::LOG10E, JSValueType::number, getConstant<&JSMath::getLOG10E>, ignoreWrite, nullptr},
    {WellKnownName::PI, JSValueType::number, getConstant<&JSMath::getPI>, ignoreWrite, nullptr},
    {WellKnownName::SQRT1_2, JSValueType::number, getConstant<&JSMath::getSQRT1_2>, ignoreWrite, nullptr},
    {WellKnownName::SQRT2, JSValueType::number, getConstant<&JSMath::getSQRT2>, ignoreWrite, nullptr},
    {WellKnownName::abs, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::absArguments>},
    {WellKnownName::acos, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::acosArguments>},
    {WellKnownName::asin, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::asinArguments>},
    {WellKnownName::atan, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::atanArguments>},
    {WellKnownName::atan2, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::atan2Arguments>},
    {WellKnownName::ceil, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::ceilArguments>},
    {WellKnownName::cos, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::cosArguments>},
    {WellKnownName::exp, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::expArguments>},
    {WellKnownName::floor, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::floorArguments>},
    {WellKnownName::log, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::logArguments>},
    {WellKnownName::max, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::maxArguments>},
    {WellKnownName::min, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::minArguments>},
    {WellKnownName::pow, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::powArguments>},
    {WellKnownName::random, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::randomArguments>},
    {WellKnownName::round, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::roundArguments>},
    {WellKnownName::sin, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::sinArguments>},
    {WellKnownName::sqrt, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::sqrtArguments>},
    {WellKnownName::tan, JSValueType::function, nullptr, nullptr, callFunction<&JSMath::tanArguments>},
};

}  // namespace

bool JSMath::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSObject::dispatchMember(request);
}

}  // namespace quorvelin
