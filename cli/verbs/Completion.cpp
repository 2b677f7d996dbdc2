#include <algorithm>

#include "cli/Completions.h"

namespace quillon::cli {

namespace {

/// A word as a shell takes it.
std::string inQuotes(std::string_view word) {
    std::string text = "'";
    for (const char character : word) {
        text += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return text + "'";
}

std::string list(const Words& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + inQuotes(word);
    }
    return "(" + text + ")";
}

/// The part of the scripts that both shells run: what is known, in functions that leave words in `found` and a kind of
/// word in `kind`.
class SharedPart {
public:
    SharedPart(std::ostream& out, const Description& command) : out_(out), command_(command) {}

    void write(Session& session) {
        open("The words of a kind, or the enumerators of a parameter.", "_quillon_words");
        for (const auto& [kind, words] : knownWords(command_, session)) {
            writeWords(kind, words);
        }
        close("found=()");

        open("The options of a verb.", "_quillon_options");
        for (const Description& verb : command_.verbs) {
            writeWords(verb.name, optionsOf(command_, verb.name));
        }
        close("found=" + list(optionsOf(command_, "")));

        open("What stands behind an option of a verb; nothing if it takes no word.", "_quillon_behind");
        for (const CompletionRule& rule : completionRules()) {
            if (!rule.option.empty()) {
                writeKind(std::string(rule.verb.empty() ? "*" : rule.verb) + "\\ " + std::string(rule.option),
                          rule.kind);
            }
        }
        for (const Description& verb : command_.verbs) {
            writeOthers(verb.name, verb);
        }
        writeOthers("*", command_);
        close("kind=");

        open("The words of a verb.", "_quillon_kind");
        writeKind("''", "verbs");
        for (const CompletionRule& rule : completionRules()) {
            if (rule.option.empty()) {
                writeKind(std::string(rule.verb), rule.kind);
            }
        }
        close("kind=files");
    }

private:
    void open(const char* comment, const char* function) {
        out_ << "# " << comment << '\n' << function << "() {\n    case \"$*\" in\n";
    }
    void close(const std::string& otherwise) { out_ << "        *) " << otherwise << " ;;\n    esac\n}\n"; }
    void writeWords(const std::string& pattern, const Words& words) {
        out_ << "        " << pattern << ") found=" << list(words) << " ;;\n";
    }
    void writeKind(const std::string& pattern, std::string_view kind) {
        out_ << "        " << pattern << ") kind=" << inQuotes(kind) << " ;;\n";
    }
    /// Options that take a word of which nothing more is known.
    void writeOthers(const std::string& verb, const Description& described) {
        for (const Description::Option& option : described.options) {
            for (const std::string& name : option.value.empty() ? Words() : namesOf(option)) {
                std::string pattern = verb;
                pattern += "\\ " + name;
                writeKind(pattern, "files");
            }
        }
    }

    std::ostream& out_;
    const Description& command_;
};

constexpr std::string_view bashPart = R"(
# Those of `found` that begin as the first word does, whatever the case, between the second and the third.
_quillon_matching() {
    local word
    COMPREPLY=()
    for word in "${found[@]}"; do
        if [[ ${word^^} == "${1^^}"* ]]; then
            [[ $quote ]] || printf -v word %q "$word"
            COMPREPLY+=("$2$word$3")
        fi
    done
}
# Folders, and files with a suffix.
_quillon_files() {
    local file
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$1")
    while IFS= read -r file; do
        [[ -d $file ]] || COMPREPLY+=("$file")
    done < <(compgen -f -X "!*$2" -- "$1")
    COMPREPLY=("${COMPREPLY[@]/#/$prefix}")
}
_quillon() {
    local current= previous= verb= kind= word= quote= prefix= i
    local -a words=() found=()
    # Readline takes "=" for a word of its own.
    for ((i = 1; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if ((${#words[@]} > 0)) && [[ $word == = || ${words[-1]} == *= ]]; then
            words[-1]+=$word
        else
            words+=("$word")
        fi
    done
    current=${words[-1]}
    unset 'words[-1]'
    for word in "${words[@]}"; do
        kind=
        [[ $previous == -* ]] && _quillon_behind "$verb" "$previous"
        previous=$word
        if [[ $kind ]]; then
            previous=
        elif [[ $word != -* && -z $verb ]]; then
            verb=$word
        fi
    done
    if [[ $current == --*=* ]]; then
        previous=${current%%=*}
        prefix=$previous=
        current=${current#*=}
    fi
    kind=
    [[ $previous == -* ]] && _quillon_behind "$verb" "$previous"
    if [[ -z $kind && $current == -* ]]; then
        _quillon_options "$verb"
        _quillon_matching "$current"
        return
    fi
    [[ $kind ]] || _quillon_kind "$verb"
    case $current in
        \"* | \'*) quote=yes current=${current:1} ;;
        *) current=${current//\\/} ;;
    esac
    # What readline has in front of a "=" stays there.
    [[ $COMP_WORDBREAKS == *=* ]] && prefix=
    case $kind in
        assignments)
            if [[ $current == *=* ]]; then
                word=${current%%=*}
                [[ $COMP_WORDBREAKS == *=* ]] || prefix+=$word=
                word=${word%%\[*}
                _quillon_words "${word^^}"
                _quillon_matching "${current#*=}" "$prefix"
            else
                compopt -o nospace 2>/dev/null
                _quillon_words parameters
                _quillon_matching "$current" "$prefix" =
            fi
            ;;
        verbs | parameters | constants | groups | registers | events)
            _quillon_words "$kind"
            _quillon_matching "$current" "$prefix"
            ;;
        files) _quillon_files "$current" '' ;;
        folders) _quillon_files "$current" / ;;
        \(*)
            kind=${kind#?}
            _quillon_files "$current" "${kind%?}"
            ;;
        *)
            read -r -a found <<<"$kind"
            _quillon_matching "$current" "$prefix"
            ;;
    esac
}
complete -F _quillon quillon
)";

constexpr std::string_view zshPart = R"(
_quillon() {
    local previous= verb= kind= word= name=
    local -a found
    local -i i
    for ((i = 2; i < CURRENT; i++)); do
        word=$words[i]
        kind=
        [[ $previous == -* ]] && _quillon_behind "$verb" "$previous"
        previous=$word
        if [[ -n $kind ]]; then
            previous=
        elif [[ $word != -* && -z $verb ]]; then
            verb=$word
        fi
    done
    if [[ $PREFIX == --*=* ]]; then
        previous=${PREFIX%%=*}
        compset -P 1 '*='
    fi
    kind=
    [[ $previous == -* ]] && _quillon_behind "$verb" "$previous"
    if [[ -z $kind && $PREFIX == -* ]]; then
        _quillon_options "$verb"
        compadd -a found
        return
    fi
    [[ -n $kind ]] || _quillon_kind "$verb"
    case $kind in
        assignments)
            if [[ $PREFIX == *=* ]]; then
                name=${PREFIX%%=*}
                name=${name%%\[*}
                compset -P 1 '*='
                _quillon_words "${(U)name}"
                compadd -M 'm:{a-zA-Z}={A-Za-z}' -a found
            else
                _quillon_words parameters
                compadd -M 'm:{a-zA-Z}={A-Za-z}' -S = -a found
            fi
            ;;
        verbs | parameters | constants | groups | registers | events)
            _quillon_words "$kind"
            compadd -M 'm:{a-zA-Z}={A-Za-z}' -a found
            ;;
        files) _files ;;
        folders) _files -/ ;;
        \(*) _files -g "*${${kind#?}%?}" ;;
        *)
            found=(${=kind})
            compadd -a found
            ;;
    esac
}
# Loaded by its name this file is the first call of the function; read by "source" it makes the function known.
if [[ ${zsh_eval_context[-1]} == loadautofunc ]]; then
    _quillon "$@"
else
    compdef _quillon quillon
fi
)";

ExitStatus completion(const Description& command, Session& session, Console& console, const std::string& shell) {
    const bool isZsh = shell == "zsh";
    console.out << (isZsh ? "#compdef quillon\n" : "");
    SharedPart(console.out, command).write(session);
    console.out << (isZsh ? zshPart : bashPart);
    return Done;
}

}  // namespace

void addCompletionVerb(Verbs& verbs) {
    auto shell = std::make_shared<std::string>();
    Verb verb = verbs.add("completion", "Print the completion script for a shell",
                          "  source <(quillon completion bash)\n"
                          "  quillon completion zsh > ~/.zfunc/_quillon     a folder of the shell's fpath",
                          [verbs, shell](Session& session, Console& console) {
                              return completion(verbs.describe(), session, console, *shell);
                          });
    verb.add("SHELL", shell.get(), "bash or zsh").required().oneOf({"bash", "zsh"});
}

}  // namespace quillon::cli
