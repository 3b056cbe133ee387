#include "app/settings_catalog.h"
#include "cli/commands.h"
#include "cli/output.h"

namespace tessary {
namespace {

void writeSettingValue(JsonWriter& writer, const SettingValue& value) {
    std::visit([&](const auto& typed) { writeValue(writer, typed); }, value);
}

void writeEntry(JsonWriter& writer, const Settings& settings, const SettingEntry& entry) {
    writer.beginObject();
    writer.key("key");
    writer.string(entry.key);
    writer.key("value");
    writeSettingValue(writer, settingValue(settings, entry));
    writer.key("default");
    writeSettingValue(writer, entry.defaultValue);
    writer.key("isSet");
    writer.boolean(isSet(settings, entry));
    writer.key("description");
    writer.string(entry.description);
    writer.endObject();
}

struct NoArgs {};

void listSettings(CommandContext& context, const NoArgs&) {
    const Settings& settings = context.system().settings;
    if (context.json()) {
        return context.printJson([&](JsonWriter& writer) {
            writer.beginArray();
            for (const SettingEntry& entry : settingsCatalog()) writeEntry(writer, settings, entry);
            writer.endArray();
        });
    }
    for (const SettingEntry& entry : settingsCatalog()) {
        context.out() << entry.key << " = " << onOneLine(describeSetting(settingValue(settings, entry)))
                      << (isSet(settings, entry) ? "" : "  (default)") << "\n    " << entry.description << '\n';
    }
}

struct KeyArgs {
    std::string key;
    std::string value;
};

void declareKey(CLI::App& command, KeyArgs& args) {
    addText(command, "KEY", args.key, "As \"settings list\" shows it")->required();
}

void printEntry(CommandContext& context, const SettingEntry& entry) {
    const Settings& settings = context.system().settings;
    if (context.json()) {
        return context.printJson([&](JsonWriter& writer) { writeEntry(writer, settings, entry); });
    }
    context.out() << onOneLine(describeSetting(settingValue(settings, entry))) << '\n';
}

void getSetting(CommandContext& context, const KeyArgs& args) {
    printEntry(context, *valueOrFail(findSetting(args.key)));
}

void setSetting(CommandContext& context, const KeyArgs& args) {
    const SettingEntry& entry = *valueOrFail(findSetting(args.key));
    valueOrFail(storeSetting(context.system().settings, entry, args.value));
    printEntry(context, entry);
}

void unsetSetting(CommandContext& context, const KeyArgs& args) {
    const SettingEntry& entry = *valueOrFail(findSetting(args.key));
    if (const Settings::Stored removed = context.system().settings.remove(entry.key); !removed) {
        throw CommandFailure("The setting could not be removed: " + removed.error());
    }
    printEntry(context, entry);
}

}  // namespace

void addSettingsCommands(CLI::App& program, Action& chosen) {
    CLI::App& group = *program.add_subcommand("settings", "See and change the settings");
    group.require_subcommand(1);
    addCommand<NoArgs>(group, chosen, "list", "List all settings", [](CLI::App&, NoArgs&) {}, listSettings);
    addCommand<KeyArgs>(group, chosen, "get", "Print the value of a setting", declareKey, getSetting);
    addCommand<KeyArgs>(
        group, chosen, "set", "Change a setting",
        [](CLI::App& command, KeyArgs& args) {
            declareKey(command, args);
            addText(command, "VALUE", args.value, "Its new value")->required();
        },
        setSetting);
    addCommand<KeyArgs>(group, chosen, "unset", "Go back to a setting's default", declareKey, unsetSetting);
}

}  // namespace tessary
