#include <algorithm>

#include "app/ai_access.h"
#include "cli/background.h"
#include "cli/commands.h"
#include "cli/named_values.h"
#include "cli/output.h"
#include "cli/secret_input.h"

namespace tessary {
namespace {

// ---- providers ----

struct NoArgs {};

/// One provider as it stands.
struct ProviderStatus {
    AIProviderKind kind = AIProviderKind::apple;
    bool isChosen = false;
    std::optional<std::string> problem;  ///< why it can't run now
};

std::vector<ProviderStatus> statusOfAll(AISystem& ai, const AISettings& settings, const std::stop_token& stop) {
    std::vector<ProviderStatus> all;
    lookAtProviders(ai, settings, kAIProviderKinds, stop, [&](const ProviderState& state) {
        all.push_back({.kind = state.kind, .isChosen = state.kind == settings.provider, .problem = {}});
        if (state.problem) all.back().problem = state.problem->text();
    });
    return all;
}

void printProvidersJson(CommandContext& context, const std::vector<ProviderStatus>& all) {
    context.printJson([&](JsonWriter& writer) {
        writer.beginArray();
        for (const ProviderStatus& status : all) {
            writer.beginObject();
            const auto member = [&writer](std::string_view key, std::string_view value) {
                writer.key(key);
                writer.string(value);
            };
            member("provider", enumName(status.kind));
            member("label", labelOf(status.kind));
            member("badge", badgeOf(status.kind));
            member("description", descriptionOf(status.kind));
            writer.key("isChosen");
            writer.boolean(status.isChosen);
            writer.key("canRun");
            writer.boolean(!status.problem);
            if (status.problem) member("problem", *status.problem);
            writer.endObject();
        }
        writer.endArray();
    });
}

void listProviders(CommandContext& context, const NoArgs&) {
    const AISettings settings = readAISettings(context.system().settings);
    AISystem& ai = context.ai();
    const Interrupts interrupts;
    const auto all =
        inBackground(context.loop(), interrupts, [&](std::stop_token stop) { return statusOfAll(ai, settings, stop); });
    if (interrupts.raised()) throw CommandFailure("Cancelled.");
    if (context.json()) return printProvidersJson(context, all);
    TextTable table({"", "NAME", "PROVIDER", "", "NOW"});
    for (const ProviderStatus& status : all) {
        table.add({status.isChosen ? "*" : "", std::string(enumName(status.kind)), std::string(labelOf(status.kind)),
                   std::string(badgeOf(status.kind)), status.problem ? "no" : "ready"});
    }
    table.print(context.out(), context.system().text);
    for (const ProviderStatus& status : all) {
        if (status.problem) context.out() << '\n' << enumName(status.kind) << ": " << onOneLine(*status.problem);
    }
    context.out() << "\n\n* is the one in use; change it with: tessary-cli settings set flashcards.provider NAME\n";
}

// ---- keys ----

struct KeyArgs {
    std::string provider;
};

void declareProvider(CLI::App& command, KeyArgs& args) {
    addText(command, "PROVIDER", args.provider, "gemini, claude or openai")->required();
}

AIProviderKind providerWithKey(const KeyArgs& args) {
    const AIProviderKind kind = providerNamed(args.provider);
    if (!needsKey(kind)) throw CommandFailure(std::string(labelOf(kind)) + " needs no API key.");
    return kind;
}

void setKey(CommandContext& context, const KeyArgs& args) {
    const AIProviderKind kind = providerWithKey(args);
    const std::optional<std::string> line =
        readSecret(context.streams(), "Paste your " + std::string(labelOf(kind)) + " API key (it is not shown): ");
    const std::string key = valueOrFail(checkedKey(line.value_or("")));
    SecretStore& secrets = context.ai().secrets();
    const Interrupts interrupts;
    const auto written = inBackground(context.loop(), interrupts, [&](std::stop_token stop) {
        return secrets.write(keyNameOf(kind), keyLabelOf(kind), key, std::move(stop));
    });
    if (!written) throw CommandFailure("Couldn't save the key to the keychain: " + describe(written.error()));
    if (context.json()) {
        return context.printJsonObject([&](auto member) {
            member("provider", std::string(enumName(kind)));
            member("saved", true);
        });
    }
    context.out() << "Saved in your keychain. " << privacyLineOf(kind) << '\n';
}

void clearKey(CommandContext& context, const KeyArgs& args) {
    const AIProviderKind kind = providerWithKey(args);
    SecretStore& secrets = context.ai().secrets();
    const Interrupts interrupts;
    const auto removed = inBackground(context.loop(), interrupts, [&](std::stop_token stop) {
        return secrets.remove(keyNameOf(kind), std::move(stop));
    });
    if (!removed) throw CommandFailure("Couldn't remove the key from the keychain: " + describe(removed.error()));
    if (context.json()) {
        return context.printJsonObject([&](auto member) {
            member("provider", std::string(enumName(kind)));
            member("removed", *removed);
        });
    }
    context.out() << (*removed ? "Removed from your keychain.\n" : "There was no key in your keychain.\n");
}

}  // namespace

void addAICommands(CLI::App& program, Action& chosen) {
    addCommand<NoArgs>(
        program, chosen, "providers", "Show who can write cards, and who can't right now", [](CLI::App&, NoArgs&) {},
        listProviders);
    CLI::App& keys = *program.add_subcommand("keys", "Keep API keys in your keychain");
    keys.require_subcommand(1);
    addCommand<KeyArgs>(keys, chosen, "set", "Save the key that stands on standard input", declareProvider, setKey);
    addCommand<KeyArgs>(keys, chosen, "clear", "Remove the key", declareProvider, clearKey);
}

}  // namespace tessary
