#include "quorvelin/script_session.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <new>
#include <utility>

#include "quorvelin/diagnostics.h"
#include "quorvelin/text_encoding.h"
#include "quorvelin/tree_walk.h"

namespace quorvelin::tool {

namespace {

// No text is long enough to have a line with this number.
constexpr int32_t kFirstScriptLine = BString::kMaximumLength + 2;

// Moves all positions of a tree to the line numbers of its script. Nobody else holds the tree yet.
class LineShift final : public TreeVisitor {
  public:
    explicit LineShift(int32_t distance) : distance_(distance) {}
    void beginNode(const char*, const JSNode& node) override { const_cast<JSNode&>(node).line += distance_; }

  private:
    int32_t distance_;
};

BString toText(std::string_view bytes) {
    const std::u16string units = decodeUtf8(bytes);
    return BString(units.data(), static_cast<int32_t>(units.size()));
}

}  // namespace

ScriptSession::ScriptSession(const ProgramOutput& output)
    : output_(output), machine_(new ObservedKernel(this)) {
    if (!machine_) throw std::bad_alloc();
}

ExitStatus ScriptSession::add(const Input& input) {
    Entry entry;
    const ExitStatus status = openScript(input, &entry.script, output_.messages);
    if (status != kFine) return status;
    entry.firstLine = scripts_.empty()
                          ? kFirstScriptLine
                          : scripts_.back().firstLine + scripts_.back().script.source.lineBound();
    if (entry.firstLine > std::numeric_limits<int32_t>::max() - entry.script.source.lineBound()) {
        showFileMessage(output_.messages, input.name, "the scripts are too long");
        return kUnusable;
    }
    LineShift shift(entry.firstLine);
    walkTree(entry.script.root.get(), shift);
    scripts_.push_back(std::move(entry));
    return kFine;
}

ExitStatus ScriptSession::run(size_t index, Value* value) {
    running_ = index;
    const Owned<JSNode> root = std::move(scripts_[index].script.root);
    const int32_t noLine = scripts_[index].firstLine;
    const size_t messagesBefore = messageCount_;
    machine_->setPosition(noLine, 0);
    const bool accepted = root->check(machine_.get());
    if (accepted) {
        *value = Value(machine_->execute(root.get(), nullptr));
    } else if (messageCount_ == messagesBefore) {
        showMessage(u"the script is refused: a part of its tree is missing", noLine, 0);
    }
    machine_->setCompletion(JSCompletion::normal);
    machine_->setPosition(noLine, 0);
    return accepted ? kFine : kScriptError;
}

ExitStatus ScriptSession::addAndRun(const Input& input, Value* value) {
    const ExitStatus status = add(input);
    return status == kFine ? run(scripts_.size() - 1, value) : status;
}

void ScriptSession::setArguments(const std::vector<std::string>& arguments) {
    JSKernel* const machine = machine_.get();
    const Value array(machine->makeArray(nullptr));
    if (!array) throw std::bad_alloc();
    int32_t position = 0;
    for (const std::string& argument : arguments) {
        const Value text(machine->makeString(toText(argument), nullptr));
        const Value stored(array->setItem(position++, text.get(), machine, nullptr));
    }
    const Value stored(machine->setMember(u"args", array.get(), machine, nullptr));
}

void ScriptSession::showValue(const Value& value, bool showsType) {
    JSKernel* const machine = machine_.get();
    const JSValueType type = value ? value->valueType(machine, nullptr) : JSValueType::undefined;
    if (showsType) output_.results.write(typeWord(type));
    if (type != JSValueType::undefined) {
        BString text;
        value->asString(text, machine, nullptr);
        if (showsType) output_.results.write(' ');
        output_.results.write(encodeUtf8(unitsOf(text)));
    }
    if (showsType || type != JSValueType::undefined) output_.results.write('\n');
}

void ScriptSession::messageReported(const BString& message, int32_t line, int32_t column) {
    ++messageCount_;
    showMessage(unitsOf(message), line, column);
}

void ScriptSession::linePrinted(const BString& text) {
    output_.results.write(encodeUtf8(unitsOf(text)) + '\n');
    // Nobody reads any more: the script ends here.
    if (output_.results.isClosed()) machine_->setCompletion(JSCompletion::returned);
}

// Results come before the message that follows them, also where both go to one terminal.
void ScriptSession::showMessage(std::u16string_view message, int32_t line, int32_t column) {
    output_.results.flush();
    if (const Entry* entry = entryOf(line)) {
        showDiagnostic(output_.messages, entry->script.name, entry->script.source, line - entry->firstLine,
                       column, message);
    } else if (running_ < scripts_.size()) {
        showUnseenPlace(output_.messages, scripts_[running_].script.name, line, column, message);
    }
    output_.messages.flush();
}

const ScriptSession::Entry* ScriptSession::entryOf(int32_t line) const {
    const auto behind =
        std::upper_bound(scripts_.begin(), scripts_.end(), line,
                         [](int32_t number, const Entry& entry) { return number < entry.firstLine; });
    return behind == scripts_.begin() ? nullptr : &*std::prev(behind);
}

const char* typeWord(JSValueType type) {
    static constexpr const char* kWords[] = {"undefined", "string",   "number",    "boolean",
                                             "object",    "function", "expression"};
    const auto index = static_cast<uint32_t>(type);
    return index < std::size(kWords) ? kWords[index] : "undefined";
}

}  // namespace quorvelin::tool
