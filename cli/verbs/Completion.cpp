#include "cli/Verb.h"
#include "client/PublicParameters.h"

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

std::string verbNames(const CLI::App& command) {
    WordList names;
    for (const CLI::App* verb : command.get_subcommands(nullptr)) {
        names.add(verb->get_name());
    }
    return names.text();
}

std::string optionNames(const CLI::App& app) {
    WordList names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.add(std::string("--").append(name));
        }
    }
    return names.text();
}

std::string publicNames() {
    WordList names;
    for (const client::PublicParameter& parameter : client::publicParameters()) {
        names.add(parameter.name);
    }
    return names.text();
}

/// Verbs first, then options and, where a parameter is wanted, the parameters' names; files everywhere else.
void writeScript(std::ostream& out, const CLI::App& command) {
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
    for (const CLI::App* verb : command.get_subcommands(nullptr)) {
        out << "        " << verb->get_name() << ") options=\"$options " << optionNames(*verb) << "\" ;;\n";
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

ExitStatus completion(const CLI::App& command, Console& console, const std::string& shell) {
    // The Z shell runs the same function through its own reader of such scripts.
    console.out << (shell == "zsh" ? "#compdef quillon\nautoload -U +X bashcompinit && bashcompinit\n" : "");
    writeScript(console.out, command);
    return Done;
}

}  // namespace

void addCompletionVerb(Verbs& verbs) {
    const CLI::App& command = verbs.commands();
    auto shell = std::make_shared<std::string>();
    CLI::App& verb =
        verbs.add("completion", "Print the completion script for a shell",
                  "  source <(quillon completion bash)\n"
                  "  quillon completion zsh > ~/.zfunc/_quillon",
                  [&command, shell](Session&, Console& console) { return completion(command, console, *shell); });
    verb.add_option("SHELL", *shell, "bash or zsh")->required()->check(CLI::IsMember({"bash", "zsh"}));
}

}  // namespace quillon::cli
