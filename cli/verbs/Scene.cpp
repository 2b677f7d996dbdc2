#include "cli/Verb.h"
#include "cli/WorldWords.h"

namespace quillon::cli {

namespace {

std::string inWords(const Scene& scene) {
    if (const auto* pattern = std::get_if<ScenePattern>(&scene.content)) {
        return pattern->text;
    }
    const auto* picture = std::get_if<ScenePicture>(&scene.content);
    return picture != nullptr ? picture->file.string() : "";
}

ExitStatus show(Session& session, Console& console, const SceneWords& words) {
    const Scene scene = parseScene(words);
    if (scene.isEmpty()) {
        throw UsageError("a scene, or --light, is missing: as scene part.png --scale 10/mm; --help tells more");
    }
    apply(session.board(), scene);
    const std::string content = inWords(scene);
    if (session.options().json) {
        Json json = object({});
        if (!content.empty()) {
            put(json, "scene", content);
        }
        put(json, "light", scene.illumination.has_value());
        printJson(console, json);
    } else {
        console.out << (content.empty() ? "the light is set" : "the camera sees " + content) << '\n';
    }
    tellHints(console, hintsFor(session.applet(), scene), "set ");
    session.tellIfLost();
    return Done;
}

}  // namespace

void addSceneVerb(Verbs& verbs) {
    auto words = std::make_shared<SceneWords>();
    words->name = "scene";
    Verb verb = verbs.add("scene", "Put a scene in front of the software board's camera, and light it",
                          "  scene part.png --scale 10/mm           in quillon shell or a script: a picture\n"
                          "  scene weave.png --tile                 one that is repeated in both directions\n"
                          "  scene noise:7                          a pattern\n"
                          "  scene --light reference=20us,noise=1%  the light alone",
                          [words](Session& session, Console& console) { return show(session, console, *words); });
    verb.add("SCENE", &words->scene,
             "A pattern (bars, ramp, checker, noise, noise:SEED, grey, grey:V with 0 to 255) or a picture (.png, .ppm, "
             ".pgm, .pnm), whose columns are the camera's pixels");
    addSceneOptions(verb, *words);
}

}  // namespace quillon::cli
