#include "frontend/nodes.h"

#include "foundation/text_builder.h"
#include "frontend/token.h"

namespace quorvelin {

bool JSEntryListNode::append(JSNode* value) {
    ListRecord* record = entries.append();
    if (record == nullptr) return false;
    record->value = Owned<JSNode>(value);
    return true;
}

bool JSParametersNode::append(const Name& name) {
    ParameterRecord* record = parameters.append();
    if (record == nullptr) return false;
    record->name = name;
    return true;
}

bool JSSwitchNode::appendCase(JSNode* test) {
    CaseRecord* record = cases.append();
    if (record == nullptr) return false;
    record->test = Owned<JSNode>(test);
    return true;
}

namespace {

void appendPlace(TextBuilder& message, int32_t line, int32_t column) {
    message.append(u"Error(Ln ");
    message.appendDecimal(line);
    message.append(u", Col ");
    message.appendDecimal(column);
    message.append(u"): ");
}

}  // namespace

JSErrorNode::JSErrorNode(int32_t nodeLine, int32_t nodeColumn, const char16_t* reason)
    : JSNode(kErrorKind, nodeLine, nodeColumn) {
    TextBuilder builder;
    appendPlace(builder, nodeLine, nodeColumn);
    builder.append(reason);
    message = builder.text();
}

JSErrorNode::JSErrorNode(int32_t nodeLine, int32_t nodeColumn, int32_t tokenKind, const BString& tokenText)
    : JSNode(kErrorKind, nodeLine, nodeColumn) {
    TextBuilder builder;
    appendPlace(builder, nodeLine, nodeColumn);
    builder.appendAscii(tokenKindName(tokenKind));
    builder.append(u' ');
    builder.append(tokenText);
    message = builder.text();
}

}  // namespace quorvelin
