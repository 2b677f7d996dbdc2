#include <algorithm>
#include <array>

#include "cli/Verb.h"
#include "quillon/Enumerators.h"
#include "quillon/PublicParameters.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

using Words = std::vector<std::string>;

/// What stands behind an option or, where that is empty, as the words of a verb. An empty verb is every verb; its rows
/// come last, as a verb may have an option of that name for itself.
struct Rule {
    std::string_view verb;
    std::string_view option;
    std::string_view kind;
};

// A kind in brackets is the suffix of files; one that the scripts don't know is a list of words.
constexpr std::array rules{
    Rule{"get", "", "parameters"},
    Rule{"set", "", "assignments"},
    Rule{"describe", "", "parameters"},
    Rule{"registers", "", "registers"},
    Rule{"info", "", "constants"},
    Rule{"help", "", "verbs"},
    Rule{"completion", "", "bash zsh"},
    Rule{"load", "", "(.mcf)"},
    Rule{"save", "", "(.mcf)"},
    Rule{"check", "", "(.mcf)"},
    Rule{"diff", "", "(.mcf)"},
    Rule{"demo", "--example", "(.mcf)"},
    Rule{"demo", "--pictures", "folders"},
    Rule{"list", "--group", "groups"},
    Rule{"lut", "--load", "(.lut)"},
    Rule{"lut", "--save", "(.lut)"},
    Rule{"lut", "--compare", "(.lut)"},
    Rule{"grab", "--set", "assignments"},
    Rule{"grab", "--clock", "free real"},
    Rule{"grab", "--graphics", "sixel blocks"},
    Rule{"", "--mcf", "(.mcf)"},
    Rule{"", "--save", "(.mcf)"},
    Rule{"", "--design", "(.tav)"},
    Rule{"", "--softboard", "folders"},
};

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

/// All names of an option: "-o", "--output". None for what is no option.
Words namesOf(const Description::Option& option) {
    Words names;
    std::istringstream text(option.name);
    for (std::string name; std::getline(text, name, ',');) {
        if (name.starts_with('-')) {
            names.push_back(name);
        }
    }
    return names;
}

Words optionNames(const Description& verb) {
    Words names;
    for (const Description::Option& option : verb.options) {
        for (const std::string& name : option.longNames) {
            names.push_back("--" + name);
        }
    }
    return names;
}

template <typename Table>
Words namesIn(const Table& table) {
    Words names;
    for (const auto& row : table) {
        names.emplace_back(row.name);
    }
    return names;
}

/// Labels of groups and names of enumerators, as the applet publishes them.
struct Published {
    Words groups;
    std::vector<std::pair<std::string, Words>> enumerators;

    void add(const std::vector<client::ParameterRecord>& records) {
        for (const client::ParameterRecord& record : records) {
            if (record.isGroup()) {
                groups.push_back(client::utf8(record.label));
                add(record.children);
            } else if (record.kind == client::RecordKind::Enum) {
                enumerators.emplace_back(record.symbol, namesIn(record.entries));
            }
        }
    }
};

/// Registers are parameters of an applet that was told to show them when it opened.
Words registerNames(const Options& options) {
    constexpr std::string_view prefix = "DRA_";
    Session session(options);
    session.enableDirectRegisterAccess();
    Words names;
    for (const std::string& name : parameterNames(session.applet())) {
        if (name.starts_with(prefix)) {
            names.push_back(name.substr(prefix.size()));
        }
    }
    return names;
}

/// The part of the scripts that both shells run: what is known, in functions that leave words in `found` and a kind of
/// word in `kind`.
class SharedPart {
public:
    SharedPart(std::ostream& out, const Description& command) : out_(out), command_(command) {}

    void write(Session& session) {
        open("The words of a kind, or the enumerators of a parameter.", "_quillon_words");
        Published published;
        published.add(session.applet().parameterInfo());
        writeWords("verbs", namesIn(command_.verbs));
        writeWords("parameters", namesIn(PublicParameters));
        writeWords("constants", namesIn(NamedEnumerators));
        writeWords("groups", published.groups);
        writeWords("registers", registerNames(session.options()));
        for (const auto& [name, entries] : published.enumerators) {
            writeWords(name, entries);
        }
        close("found=()");

        open("The options of a verb.", "_quillon_options");
        const Words common = optionNames(command_);
        for (const Description& verb : command_.verbs) {
            Words names = optionNames(verb);
            names.insert(names.end(), common.begin(), common.end());
            std::sort(names.begin(), names.end());
            names.erase(std::unique(names.begin(), names.end()), names.end());
            writeWords(verb.name, names);
        }
        close("found=" + list(common));

        open("What stands behind an option of a verb; nothing if it takes no word.", "_quillon_behind");
        for (const Rule& rule : rules) {
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
        for (const Rule& rule : rules) {
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
                writeKind(verb + "\\ " + name, "files");
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
        verbs | parameters | constants | groups | registers)
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
        verbs | parameters | constants | groups | registers)
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
