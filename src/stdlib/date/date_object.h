// Dates as scripts see them. An instance is a moment, and all of its members work on the fields of that
// moment in UTC; only `toLocaleString` knows the time zone.
#pragma once

#include "objects/constructor_object.h"
#include "objects/parented_object.h"
#include "stdlib/date/calendar.h"

namespace quorvelin {

class JSDateObject final : public JSInstance {
  public:
    JSDateObject(JSObject* constructor, JSObject* inner, int64_t seconds = 0)
        : JSInstance(constructor, inner), seconds_(seconds) {}

    // The moment in the default date format.
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override;
    // In milliseconds.
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    // The first of each pair takes the script's arguments; a setter does nothing without its first argument.
    virtual void setDate(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setDateValue(int32_t day);
    virtual void setHours(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setHoursValue(int32_t hour);
    virtual void setMinutes(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setMinutesValue(int32_t minute);
    virtual void setMonth(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setMonthValue(int32_t month);
    virtual void setSeconds(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setSecondsValue(int32_t second);
    virtual void setMilliseconds(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setMillisecondsValue(int32_t milliseconds);
    virtual void setTime(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setTimeValue(double milliseconds);
    virtual void setYear(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setYearValue(int32_t year);
    virtual void setFullYear(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void setFullYearValue(int32_t year, int32_t month, int32_t day);
    virtual void toGMTString(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void gmtText(BString& out);
    virtual void toLocaleString(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void localeText(BString& out);
    virtual int32_t getDate(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t dateValue();
    virtual int32_t getDay(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t dayValue();
    virtual int32_t getFullYear(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t fullYearValue();
    virtual int32_t getHours(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t hoursValue();
    virtual int32_t getMilliseconds(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t millisecondsValue();
    virtual int32_t getMinutes(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t minutesValue();
    virtual int32_t getMonth(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t monthValue();
    virtual int32_t getSeconds(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t secondsValue();
    virtual double getTime(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double timeValue();
    virtual int32_t getYear(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t yearValue();

  private:
    DateFields fields() const { return fieldsFromSeconds(seconds_); }
    void setField(int32_t DateFields::*field, int32_t value);

    int64_t seconds_;
    int32_t milliseconds_ = 0;
};

class JSDateConstructor final : public JSConstructorObject {
  public:
    JSDateConstructor() : JSConstructorObject(WellKnownName::Date) {}

    // Gives a new date, with or without `new`.
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    virtual double utcArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double utcValue(int32_t year, int32_t month, int32_t day, int32_t hour, int32_t minute,
                            int32_t second);
    virtual double parseArguments(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual double parseValue(const BString& text);

  private:
    JSObject* makeFromFields(JSObject* args, JSContext* ctx, JSObject* receiver);
};

}  // namespace quorvelin
