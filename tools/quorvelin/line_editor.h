// The lines of somebody at a terminal: with a prompt, editing and a history that lives as long as the
// session.
#pragma once

#include <histedit.h>

#include <optional>
#include <string>

namespace quorvelin::tool {

class LineEditor {
  public:
    LineEditor();
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    // The next line without its line end; nothing when the input ends. `prompt` must stay until the next
    // call.
    std::optional<std::string> next(const char* prompt);

    // Puts a text among those that can be called back.
    void remember(const std::string& text);

  private:
    static char* promptOf(EditLine* editor);

    EditLine* editor_;
    History* history_;
    const char* prompt_ = "";
};

}  // namespace quorvelin::tool
