#include "desktop/settings/provider_texts.h"

#include <QtCore/QCoreApplication>

namespace tessary {
namespace {

QString tr(const char* text) { return QCoreApplication::translate("AIEngineModel", text); }

}  // namespace

QStringList notesOf(AIProviderKind kind) {
    switch (kind) {
        case AIProviderKind::gemini:
            return {
                tr("Free keys have a daily limit (a few hundred requests — plenty for studying). Google may use "
                   "free-tier requests to improve its models; don't send anything private.")};
        case AIProviderKind::codex:
            return {tr("Uses your ChatGPT plan's limits. Slower than Gemini (each request starts Codex).")};
        case AIProviderKind::ollama: return {tr("Run `ollama pull <model>` once to download it.")};
        case AIProviderKind::apple:
        case AIProviderKind::claude:
        case AIProviderKind::openai: break;
    }
    return {};
}

QStringList stepsOf(AIProviderKind kind) {
    if (kind != AIProviderKind::gemini) return {};
    return {tr("1. Open Google AI Studio and sign in with your Google account."),
            tr("2. Click Create API key and copy it."), tr("3. Paste it here.")};
}

QString modelSettingOf(AIProviderKind kind) {
    if (kind == AIProviderKind::apple) return {};
    const std::string_view name = enumName(kind);
    return "flashcards." + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())) + "Model";
}

QString addressSettingOf(AIProviderKind kind) {
    switch (kind) {
        case AIProviderKind::gemini: return "flashcards.geminiEndpoint";
        case AIProviderKind::claude: return "flashcards.claudeEndpoint";
        case AIProviderKind::openai: return "flashcards.openaiEndpoint";
        case AIProviderKind::ollama: return "flashcards.ollamaURL";
        case AIProviderKind::apple:
        case AIProviderKind::codex: break;
    }
    return {};
}

QString adviceFor(AIProviderKind kind, const AIError& problem) {
    const QString text = QString::fromStdString(problem.text());
    if (kind != AIProviderKind::codex || !text.startsWith("Install ")) return text;
    return tr("Codex isn't installed") + ". " + text + " " +
           tr("Then open Terminal and run: codex login — choose Sign in with ChatGPT.");
}

}  // namespace tessary
