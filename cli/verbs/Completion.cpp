#include "cli/Verb.h"
#include "quillon/PublicParameters.h"

namespace quillon::cli {

namespace {

/// Words with a blank between each two.
class WordList {
public:
    void add(std::string_view word) { text_.append(text_.empty() ? "" : " ").append(word); }
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

std::string verbNames(const Description& command) {
    WordList names;
    for (const Description& verb : command.verbs) {
        names.add(verb.name);
    }
    return names.text();
}

std::string optionNames(const Description& verb) {
    WordList names;
    for (const Description::Option& option : verb.options) {
        for (const std::string& name : option.longNames) {
            names.add(std::string("--").append(name));
        }
    }
    return names.text();
}

std::string publicNames() {
    WordList names;
    for (const PublicParameter& parameter : PublicParameters) {
        names.add(parameter.name);
    }
    return names.text();
}

/// Verbs first, then options and, where a parameter is wanted, the parameters' names; files everywhere else.
void writeScript(std::ostream& out, const Description& command) {
    out << "_quillon() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} verb= word options parameters=\n"
           "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           "        case $word in -*) ;; *) verb=$word; break ;; esac\n"
           "    done\n"
           "    options=\""
        << optionNames(command)
        << "\"\n"
           "    case $verb in\n"
           "        '') COMPREPLY=($(compgen -W \""
        << verbNames(command) << " $options\" -- \"$current\")); return ;;\n";
    for (const Description& verb : command.verbs) {
        out << "        " << verb.name << ") options=\"$options " << optionNames(verb) << "\" ;;\n";
    }
    out << "    esac\n"
           "    case $verb in get|set|describe) parameters=\""
        << publicNames()
        << "\" ;; esac\n"
           "    case $current in\n"
           "        -*) COMPREPLY=($(compgen -W \"$options\" -- \"$current\")) ;;\n"
           "        *) COMPREPLY=($(compgen -W \"$parameters\" -- \"$current\") $(compgen -f -- \"$current\")) ;;\n"
           "    esac\n"
           "}\n"
           "complete -o nospace -F _quillon quillon\n";
}

ExitStatus completion(const Description& command, Console& console, const std::string& shell) {
    // The Z shell runs the same function through its own reader of such scripts.
    console.out << (shell == "zsh" ? "#compdef quillon\nautoload -U +X bashcompinit && bashcompinit\n" : "");
    writeScript(console.out, command);
    return Done;
}

}  // namespace

void addCompletionVerb(Verbs& verbs) {
    auto shell = std::make_shared<std::string>();
    Verb verb =
        verbs.add("completion", "Print the completion script for a shell",
                  "  source <(quillon completion bash)\n"
                  "  quillon completion zsh > ~/.zfunc/_quillon",
                  [verbs, shell](Session&, Console& console) { return completion(verbs.describe(), console, *shell); });
    verb.add("SHELL", shell.get(), "bash or zsh").required().oneOf({"bash", "zsh"});
}

}  // namespace quillon::cli
