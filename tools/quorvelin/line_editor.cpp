#include "quorvelin/line_editor.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace quorvelin::tool {

namespace {

constexpr int kHistorySize = 1000;

// The editor takes its bytes for characters of the locale. Scripts are UTF-8 in any case.
void useWideCharacters() {
    if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
}

}  // namespace

LineEditor::LineEditor() {
    useWideCharacters();
    editor_ = ::el_init("quorvelin", stdin, stdout, stderr);
    history_ = ::history_init();
    if (editor_ == nullptr || history_ == nullptr) throw std::bad_alloc();
    HistEvent event;
    ::history(history_, &event, H_SETSIZE, kHistorySize);
    ::el_set(editor_, EL_CLIENTDATA, this);
    ::el_set(editor_, EL_PROMPT, promptOf);
    ::el_set(editor_, EL_EDITOR, "emacs");
    ::el_set(editor_, EL_SIGNAL, 1);
    ::el_set(editor_, EL_HIST, ::history, history_);
}

LineEditor::~LineEditor() {
    ::history_end(history_);
    ::el_end(editor_);
}

char* LineEditor::promptOf(EditLine* editor) {
    void* self = nullptr;
    ::el_get(editor, EL_CLIENTDATA, &self);
    return const_cast<char*>(static_cast<LineEditor*>(self)->prompt_);
}

std::optional<std::string> LineEditor::next(const char* prompt) {
    prompt_ = prompt;
    int length = 0;
    const char* text = ::el_gets(editor_, &length);
    if (text == nullptr || length <= 0) return std::nullopt;
    std::string line(text, static_cast<size_t>(length));
    if (line.ends_with('\n')) line.pop_back();
    return line;
}

void LineEditor::remember(const std::string& text) {
    HistEvent event;
    ::history(history_, &event, H_ENTER, text.c_str());
}

}  // namespace quorvelin::tool
