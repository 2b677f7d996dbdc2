#include <algorithm>
#include <array>
#include <set>

#include "cli/Suggestions.h"
#include "cli/Verb.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

/// Where a word may be found, the most telling text first.
enum Field : std::size_t { Name, Label, Enumerators, Group, Unit, Text, FieldCount };
constexpr std::array<const char*, FieldCount> fieldNames{"name",  "label", "enumerators",
                                                         "group", "unit",  "description"};

/// What is told of one parameter, each text in UTF-8.
struct Entry {
    int id;
    std::array<std::string, FieldCount> texts;
    std::vector<std::string> enumerators;  ///< "FG_COL48, 48 bit": name and label of each
};

struct Hit {
    const Entry* entry;
    std::set<Field> fields;
    std::size_t rank;  ///< the least telling text that had to be looked at
};

char upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

/// Where `word` begins in `text`, without regard to case.
std::size_t findIn(std::string_view text, std::string_view word, std::size_t from = 0) {
    const auto found =
        std::search(text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size())), text.end(), word.begin(),
                    word.end(), [](char left, char right) { return upper(left) == upper(right); });
    return found != text.end() ? static_cast<std::size_t>(found - text.begin()) : std::string_view::npos;
}

bool isIn(std::string_view text, std::string_view word) {
    return findIn(text, word) != std::string_view::npos;
}

class Index {
public:
    explicit Index(const client::Applet& applet) : applet_(applet) {
        const std::vector<client::ParameterRecord> trees = applet.parameterInfo();
        // The newest group comes first in the applet's list; people read them in the order of their making.
        for (auto tree = trees.rbegin(); tree != trees.rend(); ++tree) {
            add(*tree, "");
        }
        for (const std::string& name : parameterNames(applet)) {
            const Parameter parameter = findParameter(applet, name, trees);
            if (std::ranges::find(entries_, parameter.id, &Entry::id) == entries_.end()) {
                entries_.push_back({parameter.id, {name, "", "", "", "", descriptionOf(name)}, {}});
            }
        }
    }

    /// Those that have all words, those first that have them in the more telling texts.
    std::vector<Hit> find(const std::vector<std::string>& words) const {
        std::vector<Hit> hits;
        for (const Entry& entry : entries_) {
            Hit hit{&entry, {}, 0};
            if (std::ranges::all_of(words, [&](const std::string& word) { return look(entry, word, hit); })) {
                hits.push_back(std::move(hit));
            }
        }
        std::ranges::stable_sort(hits, {}, &Hit::rank);
        return hits;
    }

    /// All words of all texts, names also in their parts.
    std::vector<std::string> words() const {
        std::set<std::string> found;
        for (const Entry& entry : entries_) {
            found.insert(entry.texts[Name]);
            for (const std::string& text : entry.texts) {
                addWords(text, found);
            }
        }
        return {found.begin(), found.end()};
    }

private:
    void add(const client::ParameterRecord& record, const std::string& group) {
        const std::string label = client::utf8(record.label);
        if (record.isGroup()) {
            for (const client::ParameterRecord& child : record.children) {
                add(child, group.empty() ? label : group + " > " + label);
            }
            return;
        }
        Entry entry{record.id,
                    {record.symbol, label, "", group, client::readableUnit(record.unit), descriptionOf(record.symbol)},
                    {}};
        for (const client::EnumEntry& one : record.entries) {
            entry.enumerators.push_back(one.name + ", " + client::utf8(one.label));
            entry.texts[Enumerators] += entry.enumerators.back() + "\n";
        }
        entries_.push_back(std::move(entry));
    }

    /// What the applet answers for a name that it has no text for is a hyphen.
    std::string descriptionOf(const std::string& name) const {
        const std::string text = client::utf8(applet_.readDescription(name));
        return text == "-" ? "" : text;
    }

    static bool look(const Entry& entry, const std::string& word, Hit& hit) {
        std::size_t best = FieldCount;
        for (std::size_t field = FieldCount; field-- > 0;) {
            if (isIn(entry.texts[field], word)) {
                hit.fields.insert(static_cast<Field>(field));
                best = field;
            }
        }
        hit.rank = std::max(hit.rank, best);
        return best != FieldCount;
    }

    static void addWords(const std::string& text, std::set<std::string>& found) {
        constexpr std::size_t shortest = 3;  // a shorter one is near to too many
        std::string word;
        for (const char character : text + " ") {
            const bool goesOn = (upper(character) >= 'A' && upper(character) <= 'Z') || (character & 0x80) != 0;
            if (goesOn) {
                word += character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
            } else {
                if (word.size() >= shortest) {
                    found.insert(word);
                }
                word.clear();
            }
        }
    }

    const client::Applet& applet_;
    std::vector<Entry> entries_;
};

/// A text with all that was looked for marked in it.
std::string marked(const std::string& text, const std::vector<std::string>& words, const Painter& painter) {
    std::vector<bool> isMarked(text.size(), false);
    for (const std::string& word : words) {
        for (std::size_t at = 0; (at = findIn(text, word, at)) != std::string::npos; ++at) {
            std::fill_n(isMarked.begin() + static_cast<std::ptrdiff_t>(at), word.size(), true);
        }
    }
    std::string result;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t end = begin;
        while (end < text.size() && isMarked[end] == isMarked[begin]) {
            ++end;
        }
        result += painter.paint(isMarked[begin] ? Style::Good : Style::Plain, text.substr(begin, end - begin));
        begin = end;
    }
    return result;
}

std::vector<std::string> foundEnumerators(const Entry& entry, const std::vector<std::string>& words) {
    std::vector<std::string> found;
    std::ranges::copy_if(entry.enumerators, std::back_inserter(found), [&](const std::string& text) {
        return std::ranges::any_of(words, [&](const std::string& word) { return isIn(text, word); });
    });
    return found;
}

void print(Console& console, const std::vector<Hit>& hits, const std::vector<std::string>& words) {
    const auto mark = [&](const std::string& text) { return marked(text, words, console.outPainter); };
    Rows rows;
    for (const Hit& hit : hits) {
        const auto& texts = hit.entry->texts;
        const std::string path = texts[Group] + (texts[Group].empty() ? "" : " > ") + texts[Label];
        rows.push_back({mark(texts[Name]), mark(path), mark(texts[Unit]), mark(texts[Text])});
        for (const std::string& enumerator : foundEnumerators(*hit.entry, words)) {
            rows.push_back({"", "", "", mark(enumerator)});
        }
    }
    printRows(console.out, rows);
}

Json toJson(const Hit& hit, const std::vector<std::string>& words) {
    const auto& texts = hit.entry->texts;
    Json found = emptyList();
    for (const Field field : hit.fields) {
        append(found, fieldNames.at(field));
    }
    Json enumerators = emptyList();
    for (const std::string& text : foundEnumerators(*hit.entry, words)) {
        append(enumerators, text.substr(0, text.find(',')));
    }
    return object({{"name", texts[Name]},
                   {"id", hit.entry->id},
                   {"label", texts[Label]},
                   {"group", texts[Group]},
                   {"unit", texts[Unit]},
                   {"description", texts[Text]},
                   {"found", found},
                   {"enumerators", enumerators}});
}

/// Says what is nowhere, and what may have been meant.
[[noreturn]] void refuse(const Index& index, const std::vector<std::string>& words) {
    for (const std::string& word : words) {
        if (index.find({word}).empty()) {
            throw RefusedError("no parameter has \"" + word + "\"" + didYouMean(word, index.words()));
        }
    }
    throw RefusedError("no parameter has all these words; each of them alone is found");
}

ExitStatus find(Session& session, Console& console, const std::vector<std::string>& words) {
    if (std::ranges::any_of(words, &std::string::empty)) {
        throw UsageError("an empty word is in everything");
    }
    const Index index(session.applet());
    const std::vector<Hit> hits = index.find(words);
    if (hits.empty()) {
        refuse(index, words);
    }
    if (session.options().json) {
        Json list = emptyList();
        for (const Hit& hit : hits) {
            append(list, toJson(hit, words));
        }
        printJson(console, list);
    } else {
        print(console, hits, words);
    }
    return Done;
}

}  // namespace

void addFindVerb(Verbs& verbs) {
    auto words = std::make_shared<std::vector<std::string>>();
    Verb verb =
        verbs.add("find", "Find parameters by what their names, labels, values, groups, units and descriptions say",
                  "  quillon find exposure\n"
                  "  quillon find encoder pulses                     what has both words\n"
                  "  quillon find \"white balance\"                    both, one behind the other\n"
                  "  quillon find FG_COL48                           by a value",
                  [words](Session& session, Console& console) { return find(session, console, *words); });
    verb.add("WORD", words.get(), "Words, or parts of words, that all must be there; case plays no part").required();
}

}  // namespace quillon::cli
