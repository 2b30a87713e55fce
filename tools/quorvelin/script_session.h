// A machine that runs scripts for people: what it prints goes to the results, and each of its messages is
// shown with the place in the script that it is about.
//
// The engine reports a line and a column, not the text that they count in. So that a message always finds its
// script - a function may be called long after the run of the script that made it - every script of a session
// gets line numbers of its own: those of its nodes are moved up, each script's behind the other's, far above
// all that a text can have. A line number below them is one of a text that was compiled at run time, by
// `Function` or
// `_eval`.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quorvelin/observed_kernel.h"
#include "quorvelin/script.h"

namespace quorvelin::tool {

class ScriptSession final : private MachineObserver {
  public:
    explicit ScriptSession(const ProgramOutput& output);
    ScriptSession(const ScriptSession&) = delete;
    ScriptSession& operator=(const ScriptSession&) = delete;

    // Reads a script in, without running it. An answer other than `kFine` has been told in the messages.
    ExitStatus add(const Input& input);

    // Runs the script at `index`, counted from 0 in the order of adding; once only, as its tree is not kept.
    // A `return` or `break` that is left pending ends this run alone. The answer is `kScriptError` when the
    // script was refused, which has been told; else `value` is the value of the run, which may be null.
    ExitStatus run(size_t index, Value* value);

    // Both at once.
    ExitStatus addAndRun(const Input& input, Value* value);

    // Sets the global `args` to an array of these texts.
    void setArguments(const std::vector<std::string>& arguments);

    // A value as people are shown it: nothing for an undefined value, else its text and a line end. With
    // `showsType` the word for its type stands in front, also of an undefined value.
    void showValue(const Value& value, bool showsType);

    size_t scriptCount() const { return scripts_.size(); }
    // How many messages scripts have reported so far.
    size_t messageCount() const { return messageCount_; }

  private:
    // A script that was added; its tree goes when it has run.
    struct Entry {
        Script script;
        int32_t firstLine = 0;  // the number that stands for line 0
    };

    void messageReported(const BString& message, int32_t line, int32_t column) override;
    void linePrinted(const BString& text) override;
    void showMessage(std::u16string_view message, int32_t line, int32_t column);
    const Entry* entryOf(int32_t line) const;

    ProgramOutput output_;
    std::vector<Entry> scripts_;
    size_t running_ = 0;
    size_t messageCount_ = 0;
    // The last member, so that the others outlive it.
    Owned<ObservedKernel> machine_;
};

// The word for a type of values, as `--type` and the batch protocol give it.
const char* typeWord(JSValueType type);

}  // namespace quorvelin::tool
