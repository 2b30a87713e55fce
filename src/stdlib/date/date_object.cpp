#include "stdlib/date/date_object.h"

#include "foundation/number_text.h"
#include "foundation/text_builder.h"
#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "objects/member_request.h"
#include "stdlib/date/date_names.h"
#include "stdlib/date/date_parser.h"
#include "stdlib/util/text_masks.h"

namespace quorvelin {

void JSDateObject::asString(BString& out, JSContext*, JSObject*) {
    out = formatDate(nameText(WellKnownName::defaultDateFormat), seconds_);
}

void JSDateObject::asNumber(JSNumberValue& out, JSContext*, JSObject*) {
    out = JSNumberValue::of(timeValue());
}

// ---- Setters ----

namespace {

// Reads the first argument as an integer and hands it to the converted form; without one nothing happens.
template <void (JSDateObject::*set)(int32_t)>
void setFromArgument(JSDateObject& self, JSObject* args, JSContext* ctx, JSObject* receiver) {
    int32_t value = 0;
    if (JSObject::argInteger(args, 0, value, ctx, receiver)) (self.*set)(value);
}

}  // namespace

void JSDateObject::setField(int32_t DateFields::*field, int32_t value) {
    DateFields changed = fields();
    changed.*field = value;
    seconds_ = secondsFromFields(changed);
}

void JSDateObject::setDate(JSObject* args, JSContext* ctx, JSObject* receiver) {
    setFromArgument<&JSDateObject::setDateValue>(*this, args, ctx, receiver);
}
void JSDateObject::setHours(JSObject* args, JSContext* ctx, JSObject* receiver) {
    setFromArgument<&JSDateObject::setHoursValue>(*this, args, ctx, receiver);
}
void JSDateObject::setMinutes(JSObject* args, JSContext* ctx, JSObject* receiver) {
    setFromArgument<&JSDateObject::setMinutesValue>(*this, args, ctx, receiver);
}
void JSDateObject::setMonth(JSObject* args, JSContext* ctx, JSObject* receiver) {
    setFromArgument<&JSDateObject::setMonthValue>(*this, args, ctx, receiver);
}
void JSDateObject::setSeconds(JSObject* args, JSContext* ctx, JSObject* receiver) {
    setFromArgument<&JSDateObject::setSecondsValue>(*this, args, ctx, receiver);
}
void JSDateObject::setMilliseconds(JSObject* args, JSContext* ctx, JSObject* receiver) {
    setFromArgument<&JSDateObject::setMillisecondsValue>(*this, args, ctx, receiver);
}
void JSDateObject::setYear(JSObject* args, JSContext* ctx, JSObject* receiver) {
    setFromArgument<&JSDateObject::setYearValue>(*this, args, ctx, receiver);
}

void JSDateObject::setDateValue(int32_t day) {
    setField(&DateFields::day, day);
}
void JSDateObject::setHoursValue(int32_t hour) {
    setField(&DateFields::hour, hour);
}
void JSDateObject::setMinutesValue(int32_t minute) {
    setField(&DateFields::minute, minute);
}
void JSDateObject::setMonthValue(int32_t month) {
    setField(&DateFields::month, month);
}
void JSDateObject::setSecondsValue(int32_t second) {
    setField(&DateFields::second, second);
}

// Quirk: no limit and no carry into the seconds.
void JSDateObject::setMillisecondsValue(int32_t milliseconds) {
    milliseconds_ = milliseconds;
}

// Quirk: the field counts from 1900, and a full year is stored in it as it is, so setYear(1976) makes it
// 3876.
void JSDateObject::setYearValue(int32_t year) {
    setField(&DateFields::year, year < 1900 ? year + 1900 : year);
}

void JSDateObject::setTime(JSObject* args, JSContext* ctx, JSObject* receiver) {
    double value = 0.0;
    if (argNumber(args, 0, value, ctx, receiver)) setTimeValue(value);
}

// Quirk: the half is added twice, so a whole number of milliseconds comes out one higher: setTime(1500)
// stores 1501.
void JSDateObject::setTimeValue(double milliseconds) {
    seconds_ = truncateToInt64(milliseconds * 0.001 + 0.0005);
    const double rest = milliseconds - static_cast<double>(seconds_) * 1000.0 + 0.5;
    milliseconds_ = truncateToInt32(rest > 0.0 ? rest + 0.5 : rest - 0.5);
}

void JSDateObject::setFullYear(JSObject* args, JSContext* ctx, JSObject* receiver) {
    int32_t year = 0;
    if (!argInteger(args, 0, year, ctx, receiver)) return;
    int32_t month = monthValue();
    argInteger(args, 1, month, ctx, receiver);
    int32_t day = dateValue();
    argInteger(args, 2, day, ctx, receiver);
    if (!ctx->isStopped()) setFullYearValue(year, month, day);
}

void JSDateObject::setFullYearValue(int32_t year, int32_t month, int32_t day) {
    DateFields changed = fields();
    changed.year = yearField(year);
    changed.month = month;
    changed.day = day;
    seconds_ = secondsFromFields(changed);
}

// ---- Texts ----

namespace {

void appendDigits(TextBuilder& out, int32_t value, int32_t places) {
    int32_t scale = 1;
    for (int32_t i = 1; i < places; ++i) scale *= 10;
    for (; scale > 0; scale /= 10) out.append(static_cast<char16_t>(u'0' + value / scale % 10));
}

// As "Sat 14 Nov 2026 08:59.33". Quirk: a point stands in front of the seconds.
void appendFields(TextBuilder& out, const DateFields& fields) {
    out.append(dayName(fields.weekDay).data(), 3);
    out.append(u' ');
    out.appendDecimal(fields.day);
    out.append(u' ');
    out.append(monthName(fields.month).data(), 3);
    out.append(u' ');
    const int64_t year = (int64_t{fields.year} + 1900) % 10000;
    appendDigits(out, static_cast<int32_t>(year < 0 ? -year : year), 4);
    out.append(u' ');
    appendDigits(out, fields.hour, 2);
    out.append(u':');
    appendDigits(out, fields.minute, 2);
    out.append(u'.');
    appendDigits(out, fields.second, 2);
}

}  // namespace

void JSDateObject::toGMTString(BString& out, JSObject*, JSContext*, JSObject*) {
    gmtText(out);
}

void JSDateObject::gmtText(BString& out) {
    TextBuilder text;
    appendFields(text, fields());
    text.append(u" GMT");
    out = text.text();
}

void JSDateObject::toLocaleString(BString& out, JSObject*, JSContext*, JSObject*) {
    localeText(out);
}

void JSDateObject::localeText(BString& out) {
    TextBuilder text;
    appendFields(text, localFields(seconds_));
    out = text.text();
}

// ---- Getters ----

int32_t JSDateObject::getDate(JSObject*, JSContext*, JSObject*) {
    return dateValue();
}
int32_t JSDateObject::getDay(JSObject*, JSContext*, JSObject*) {
    return dayValue();
}
int32_t JSDateObject::getFullYear(JSObject*, JSContext*, JSObject*) {
    return fullYearValue();
}
int32_t JSDateObject::getHours(JSObject*, JSContext*, JSObject*) {
    return hoursValue();
}
int32_t JSDateObject::getMilliseconds(JSObject*, JSContext*, JSObject*) {
    return millisecondsValue();
}
int32_t JSDateObject::getMinutes(JSObject*, JSContext*, JSObject*) {
    return minutesValue();
}
int32_t JSDateObject::getMonth(JSObject*, JSContext*, JSObject*) {
    return monthValue();
}
int32_t JSDateObject::getSeconds(JSObject*, JSContext*, JSObject*) {
    return secondsValue();
}
double JSDateObject::getTime(JSObject*, JSContext*, JSObject*) {
    return timeValue();
}
int32_t JSDateObject::getYear(JSObject*, JSContext*, JSObject*) {
    return yearValue();
}

int32_t JSDateObject::dateValue() {
    return fields().day;
}
int32_t JSDateObject::dayValue() {
    return fields().weekDay;
}
int32_t JSDateObject::hoursValue() {
    return fields().hour;
}
int32_t JSDateObject::minutesValue() {
    return fields().minute;
}
int32_t JSDateObject::monthValue() {
    return fields().month;
}
int32_t JSDateObject::secondsValue() {
    return fields().second;
}
int32_t JSDateObject::millisecondsValue() {
    return milliseconds_;
}
double JSDateObject::timeValue() {
    return static_cast<double>(seconds_) * 1000.0 + milliseconds_;
}

int32_t JSDateObject::fullYearValue() {
    return static_cast<int32_t>(static_cast<uint32_t>(fields().year) + 1900u);
}

// Quirk: 1900 is taken from a field that counts from 1900 already; 2004 gives -1796.
int32_t JSDateObject::yearValue() {
    return static_cast<int32_t>(static_cast<uint32_t>(fields().year) - 1900u);
}

// ---- The members ----

namespace {

using D = JSDateObject;

template <void (D::*method)(JSObject*, JSContext*, JSObject*)>
JSObject* callSetter(D& self, JSMemberRequest& request) {
    (self.*method)(request.argument, request.ctx, request.receiver);
    return nullptr;
}

template <void (D::*method)(BString&, JSObject*, JSContext*, JSObject*)>
JSObject* callForText(D& self, JSMemberRequest& request) {
    BString text;
    (self.*method)(text, request.argument, request.ctx, request.receiver);
    return request.ctx->makeString(text, request.receiver);
}

template <auto method, typename Class>
JSObject* callForNumber(Class& self, JSMemberRequest& request) {
    const double number = (self.*method)(request.argument, request.ctx, request.receiver);
    return request.ctx->makeNumber(JSNumberValue::of(number), request.receiver);
}

constexpr JSValueType kFunction = JSValueType::function;

constexpr NativeMember<D> kMembers[] = {
    {WellKnownName::setDate, kFunction, nullptr, nullptr, callSetter<&D::setDate>},
    {WellKnownName::setHours, kFunction, nullptr, nullptr, callSetter<&D::setHours>},
    {WellKnownName::setMinutes, kFunction, nullptr, nullptr, callSetter<&D::setMinutes>},
    {WellKnownName::setMonth, kFunction, nullptr, nullptr, callSetter<&D::setMonth>},
    {WellKnownName::setSeconds, kFunction, nullptr, nullptr, callSetter<&D::setSeconds>},
    {WellKnownName::setMilliseconds, kFunction, nullptr, nullptr, callSetter<&D::setMilliseconds>},
    {WellKnownName::setTime, kFunction, nullptr, nullptr, callSetter<&D::setTime>},
    {WellKnownName::setYear, kFunction, nullptr, nullptr, callSetter<&D::setYear>},
    {WellKnownName::setFullYear, kFunction, nullptr, nullptr, callSetter<&D::setFullYear>},
    {WellKnownName::toGMTString, kFunction, nullptr, nullptr, callForText<&D::toGMTString>},
    {WellKnownName::toLocaleString, kFunction, nullptr, nullptr, callForText<&D::toLocaleString>},
    {WellKnownName::getDate, kFunction, nullptr, nullptr, callForNumber<&D::getDate, D>},
    {WellKnownName::getDay, kFunction, nullptr, nullptr, callForNumber<&D::getDay, D>},
    {WellKnownName::getFullYear, kFunction, nullptr, nullptr, callForNumber<&D::getFullYear, D>},
    {WellKnownName::getHours, kFunction, nullptr, nullptr, callForNumber<&D::getHours, D>},
    {WellKnownName::getMilliseconds, kFunction, nullptr, nullptr, callForNumber<&D::getMilliseconds, D>},
    {WellKnownName::getMinutes, kFunction, nullptr, nullptr, callForNumber<&D::getMinutes, D>},
    {WellKnownName::getMonth, kFunction, nullptr, nullptr, callForNumber<&D::getMonth, D>},
    {WellKnownName::getSeconds, kFunction, nullptr, nullptr, callForNumber<&D::getSeconds, D>},
    {WellKnownName::getTime, kFunction, nullptr, nullptr, callForNumber<&D::getTime, D>},
    {WellKnownName::getYear, kFunction, nullptr, nullptr, callForNumber<&D::getYear, D>},
};

}  // namespace

bool JSDateObject::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSInstance::dispatchMember(request);
}

// ---- The constructor ----

JSObject* JSDateConstructor::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    // 1. No list of arguments, which no script can bring about: the present moment.
    if (args == nullptr) return finishConstruction(ctx->makeDateNow(receiver), ctx, receiver);

    const int32_t count = args->memberCount(ctx, receiver);
    if (ctx->isStopped()) return nullptr;
    Value made;
    if (count == 1) {
        // 2. One argument: a text to be parsed, or milliseconds.
        const Value argument(args->memberAt(0, ctx, receiver));
        if (ctx->isStopped() || !argument) return nullptr;
        switch (argument->valueType(ctx, receiver)) {
            case JSValueType::string:
                made = Value(ctx->makeDateValue(argument.get(), receiver));
                break;
            case JSValueType::number:
            case JSValueType::boolean: {
                JSNumberValue number;
                argument->asNumber(number, ctx, receiver);
                if (ctx->isStopped()) return nullptr;
                made = Value(ctx->makeDateNumber(number, receiver));
                break;
            }
            default:
                break;
        }
    } else {
        made = Value(makeFromFields(args, ctx, receiver));
    }
    return ctx->isStopped() ? nullptr : finishConstruction(made.take(), ctx, receiver);
}

// 3. The fields one by one. Quirk: without any the date is 1 January 1976, not now, and the milliseconds are
// the eighth argument, not the seventh.
JSObject* JSDateConstructor::makeFromFields(JSObject* args, JSContext* ctx, JSObject* receiver) {
    int32_t fields[6] = {1976, 0, 1, 0, 0, 0};
    int32_t milliseconds = 0;
    int32_t read = 0;
    while (read < 6 && argInteger(args, read, fields[read], ctx, receiver)) ++read;
    if (read == 6) argInteger(args, 7, milliseconds, ctx, receiver);
    if (ctx->isStopped()) return nullptr;
    Value date(
        ctx->makeDateFields6(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], receiver));
    if (ctx->isStopped() || !date) return nullptr;

    // The milliseconds go the way of a script, which may have replaced the member.
    const Value list(ctx->makeArraySized(1, receiver));
    if (ctx->isStopped() || !list) return nullptr;
    const Value number(ctx->makeNumber(JSNumberValue::of(milliseconds), receiver));
    if (ctx->isStopped()) return nullptr;
    { const Value stored(list->setItem(0, number.get(), ctx, receiver)); }
    if (ctx->isStopped()) return nullptr;
    const Value ignored(
        date->callMember(nameText(WellKnownName::setMilliseconds), list.get(), ctx, receiver));
    return ctx->isStopped() ? nullptr : date.take();
}

double JSDateConstructor::utcArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    if (args == nullptr) return 0.0;
    // Quirk: a missing argument is -1 and goes into the sum as such.
    int32_t fields[6] = {-1, -1, -1, -1, -1, -1};
    for (int32_t i = 0; i < 6; ++i) argInteger(args, i, fields[i], ctx, receiver);
    return utcValue(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]);
}

double JSDateConstructor::utcValue(int32_t year, int32_t month, int32_t day, int32_t hour, int32_t minute,
                                   int32_t second) {
    return quorvelin::utcValue(year, month, day, hour, minute, second);
}

double JSDateConstructor::parseArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    argString(args, 0, text, ctx, receiver);
    return ctx->isStopped() ? 0.0 : parseValue(text);
}

double JSDateConstructor::parseValue(const BString& text) {
    return parseDateText(text);
}

namespace {

using DC = JSDateConstructor;

constexpr NativeMember<DC> kConstructorMembers[] = {
    {WellKnownName::UTC, kFunction, nullptr, nullptr, callForNumber<&DC::utcArguments, DC>},
    {WellKnownName::parse, kFunction, nullptr, nullptr, callForNumber<&DC::parseArguments, DC>},
};

}  // namespace

bool JSDateConstructor::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kConstructorMembers, *this, request) ||
           JSConstructorObject::dispatchMember(request);
}

}  // namespace quorvelin
