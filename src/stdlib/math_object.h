// JSMath, the object `Math`: constants and functions on doubles.
//
// Every function is a pair of operations. The first reads the script's arguments and gives 0 when one is
// missing; the second computes. What scripts rely on is stated there, and much of it is not what the usual
// functions give.
#pragma once

#include "objects/js_object.h"

namespace quorvelin {

class JSMath final : public JSObject {
  public:
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    virtual double getE(JSObject* receiver);
    virtual double getLN2(JSObject* receiver);
    virtual double getLN10(JSObject* receiver);
    virtual double getLOG2E(JSObject* receiver);
    virtual double getLOG10E(JSObject* receiver);
    virtual double getPI(JSObject* receiver);
    virtual double getSQRT1_2(JSObject* receiver);
    virtual double getSQRT2(JSObject* receiver);

    virtual double absArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double abs(double x);
    virtual double acosArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double acos(double x);
    virtual double asinArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double asin(double x);
    virtual double atanArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double atan(double x);
    virtual double atan2Arguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double atan2(double a, double b);
    virtual double ceilArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double ceil(double x);
    virtual double cosArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double cos(double x);
    virtual double floorArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double floor(double x);
    virtual double expArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double exp(double x);
    virtual double logArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double log(double x);
    virtual double maxArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double max(double a, double b);
    virtual double minArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double min(double a, double b);
    virtual double powArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double pow(double a, double b);
    virtual double randomArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double random();
    virtual double roundArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double round(double x);
    virtual double sinArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double sin(double x);
    virtual double sqrtArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double sqrt(double x);
    virtual double tanArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double tan(double x);
};

}  // namespace quorvelin
