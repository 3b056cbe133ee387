#include "desktop/generation/generation_choices.h"

#include <QtCore/QUrl>
#include <algorithm>
#include <numeric>

namespace tessary {
namespace {

constexpr int kText = 0;
constexpr int kSelection = 1;  ///< when there is any
constexpr std::int64_t kFewestCards = 2;
constexpr int kLongPdf = 20;   ///< pages, from which on a model on this computer gets warm

bool isOnThisComputer(const std::string& address) {
    const QString host = QUrl(toQml(address)).host();
    return host == "127.0.0.1" || host == "localhost" || host == "::1";
}

std::string joinedNames(const std::set<FlashcardKind>& kinds) {
    std::string names;
    for (const FlashcardKind kind : kinds) {
        if (!names.empty()) names += ',';
        names += enumName(kind);
    }
    return names;
}

}  // namespace

void GenerationChoices::setDesk(Desk* desk) {
    if (desk == desk_) return;
    close();
    desk_ = desk;
    Q_EMIT deskChanged();
}

void GenerationChoices::open(const QString& page, const QString& selection) {
    if (desk_ == nullptr) return;
    page_ = fromQml<PageId>(page);
    selection_ = selection.trimmed();
    options_ = generationOptions(desk_->settings());
    amount_ = options_.amount == CardAmount::many ? Many : Usual;
    number_ = std::min(number_, mostCards());
    focus_.clear();
    pdfs_ = whole().pdfs;
    facts_ = {.pages = {}, .mayHaveMarks = !pdfs_.empty()};
    chooseAsLastTime(options_.source);
    Q_EMIT opened();
    Q_EMIT changed();
    lookIntoPdfs();
    lookAtProvider();
}

void GenerationChoices::close() {
    pdfInquiry_.cancel();
    providerInquiry_.cancel();
}

void GenerationChoices::chooseAsLastTime(SourceChoice last) {
    onlyHighlights_ = last == SourceChoice::highlights && !pdfs_.empty() && selection_.isEmpty();
    chosen_.fill(false, firstPdf() + static_cast<qsizetype>(pdfs_.size()));
    if (!selection_.isEmpty()) {
        chosen_[kSelection] = true;
        return;
    }
    chosen_[kText] = !onlyHighlights_;
    std::fill(chosen_.begin() + firstPdf(), chosen_.end(), last != SourceChoice::pages);
}

PageSource GenerationChoices::whole() const {
    const JournalEntry* const page = desk_ == nullptr ? nullptr : desk_->library().entries().find(page_);
    return page == nullptr ? PageSource() : sourceOf(*page, desk_->library());
}

QString GenerationChoices::pageTitle() const {
    const JournalEntry* const page = desk_ == nullptr ? nullptr : desk_->library().entries().find(page_);
    if (page == nullptr) return {};
    const QString title = toQml(page->title).simplified();
    return title.isEmpty() ? tr("Untitled") : title;
}

QStringList GenerationChoices::sources() const {
    QStringList names{tr("This page's text")};
    if (!selection_.isEmpty()) names.append(tr("Selected text"));
    for (const std::filesystem::path& pdf : pdfs_) names.append(toQml(pdf.filename().string()));
    return names;
}

void GenerationChoices::choose(int source, bool wanted) {
    if (source < 0 || source >= chosen_.size() || chosen_[source] == wanted) return;
    chosen_[source] = wanted;
    if (wanted && source < firstPdf()) {
        onlyHighlights_ = false;
        for (int other = 0; other < firstPdf(); ++other) chosen_[other] = other == source;
    }
    if (!std::any_of(chosen_.begin() + firstPdf(), chosen_.end(), std::identity())) onlyHighlights_ = false;
    Q_EMIT changed();
}

void GenerationChoices::setOnlyHighlights(bool only) {
    if (only == onlyHighlights_ || pdfs_.empty()) return;
    onlyHighlights_ = only;
    if (only) {
        const auto pdfs = chosen_.begin() + firstPdf();
        if (!std::any_of(pdfs, chosen_.end(), std::identity())) std::fill(pdfs, chosen_.end(), true);
        std::fill(chosen_.begin(), pdfs, false);
    }
    Q_EMIT changed();
}

void GenerationChoices::setWanted(FlashcardKind kind, bool wanted) {
    if (wanted == wants(kind)) return;
    if (wanted) {
        options_.request.kinds.insert(kind);
    } else {
        options_.request.kinds.erase(kind);
    }
    Q_EMIT changed();
}

std::optional<std::int64_t> GenerationChoices::expectedCards(CardAmount amount) const {
    const PageSource source = sourceToRead();
    if (onlyHighlights_ || (!source.pdfs.empty() && facts_.pages.empty())) return std::nullopt;
    SourceChunk chunk{.text = source.body, .pages = {}};
    for (std::size_t i = 0; i < pdfs_.size(); ++i) {
        if (!chosen_[firstPdf() + static_cast<qsizetype>(i)]) continue;
        const auto before = static_cast<std::int64_t>(chunk.pages.size());
        for (int page = 1; page <= facts_.pages[i]; ++page) chunk.pages.insert(before + page);
    }
    return cardCountFor({chunk}, amount, options_.cardsPerPage, options_.maxCards);
}

QString GenerationChoices::amountText() const {
    if (amount_ == ByNumber) return number_ == 1 ? tr("1 card") : tr("Up to %1 cards").arg(number_);
    const auto expected = expectedCards(amount_ == Many ? CardAmount::many : CardAmount::normal);
    if (!expected) return {};
    return tr("About %1 cards").arg(amount_ == Few ? std::max(kFewestCards, *expected / 2) : *expected);
}

QStringList GenerationChoices::providers() {
    QStringList labels;
    for (const AIProviderKind kind : kAIProviderKinds) labels.append(toQml(std::string(labelOf(kind))));
    return labels;
}

void GenerationChoices::setProvider(int provider) {
    if (provider == this->provider() || provider < 0 || std::cmp_greater_equal(provider, kAIProviderKinds.size())) {
        return;
    }
    options_.settings.provider = kAIProviderKinds[static_cast<std::size_t>(provider)];
    Q_EMIT changed();
    lookAtProvider();
}

QString GenerationChoices::providerDetail() const {
    const AISettings& settings = options_.settings;
    switch (settings.provider) {
        case AIProviderKind::apple:
        case AIProviderKind::codex: return toQml(std::string(badgeOf(settings.provider)));
        case AIProviderKind::gemini: return toQml(settings.geminiModel);
        case AIProviderKind::claude: return toQml(settings.claudeModel);
        case AIProviderKind::openai: return toQml(settings.openaiModel);
        case AIProviderKind::ollama: break;
    }
    return toQml(settings.ollamaModel);
}

bool GenerationChoices::staysHere() const {
    const AISettings& settings = options_.settings;
    return settings.provider == AIProviderKind::apple ||
           (settings.provider == AIProviderKind::ollama && isOnThisComputer(settings.ollamaURL));
}

QString GenerationChoices::providerNote() const {
    const AISettings& settings = options_.settings;
    const int pages = std::accumulate(facts_.pages.begin(), facts_.pages.end(), 0);
    if (settings.provider == AIProviderKind::apple && pages >= kLongPdf) {
        return tr(
            "Runs on your Mac and can warm it up on long PDFs. Google Gemini is free and runs in the cloud — "
            "Settings → AI.");
    }
    if (settings.provider != AIProviderKind::ollama) return toQml(privacyLineOf(settings.provider));
    return staysHere() ? tr("Nothing leaves this computer.")
                       : tr("The server at %1 receives the text.").arg(QUrl(toQml(settings.ollamaURL)).host());
}

QString GenerationChoices::problem() const {
    if (pageTitle().isEmpty()) return tr("This page no longer exists.");
    if (!chosen_.contains(true)) return tr("Choose something to read.");
    if (options_.request.kinds.empty()) return tr("Choose at least one kind of card.");
    if (readiness_ == Unready) return tr("%1 can't write cards yet.").arg(providers()[provider()]);
    return {};
}

void GenerationChoices::lookIntoPdfs() {
    if (pdfs_.empty()) return pdfInquiry_.cancel();
    const auto look = [files = pdfs_, &reader = desk_->ai().pdfs()](const std::stop_token& stop) {
        PdfFacts facts{.pages = {}, .mayHaveMarks = false};
        for (const std::filesystem::path& file : files) {
            const auto document = reader.open(file);
            facts.pages.push_back(document ? (*document)->pageCount() : 0);
            for (int page = 0; page < facts.pages.back() && !facts.mayHaveMarks && !stop.stop_requested(); ++page) {
                facts.mayHaveMarks = !(*document)->pageMarkup(page).empty();
            }
        }
        return facts;
    };
    pdfInquiry_.ask(desk_->loop(), look, [this](PdfFacts facts) {
        facts_ = std::move(facts);
        if (!facts_.mayHaveMarks && onlyHighlights_) chooseAsLastTime(SourceChoice::whole);
        Q_EMIT changed();
    });
}

void GenerationChoices::lookAtProvider() {
    if (desk_ == nullptr) return;
    readiness_ = Looking;
    providerProblem_.clear();
    Q_EMIT changed();
    const auto look = [settings = options_.settings, &ai = desk_->ai()](const std::stop_token& stop) {
        const AIResult<std::unique_ptr<AIProvider>> provider = ai.makeProvider(settings, stop);
        const AIResult<void> ready = provider ? (*provider)->prepare(stop) : std::unexpected(provider.error());
        return ready ? QString() : toQml(ready.error().text());
    };
    providerInquiry_.ask(desk_->loop(), look, [this](const QString& problem) {
        readiness_ = problem.isEmpty() ? Ready : Unready;
        providerProblem_ = problem;
        Q_EMIT changed();
    });
}

PageSource GenerationChoices::sourceToRead() const {
    PageSource source = whole();
    if (!chosen_.value(kText)) source.body.clear();
    if (!selection_.isEmpty() && chosen_.value(kSelection)) source.body = selection_.toStdString();
    source.pdfs.clear();
    for (std::size_t i = 0; i < pdfs_.size(); ++i) {
        if (chosen_.value(firstPdf() + static_cast<qsizetype>(i))) source.pdfs.push_back(pdfs_[i]);
    }
    return source;
}

GenerationOptions GenerationChoices::options() const {
    GenerationOptions options = options_;
    options.page = sourceToRead();
    options.source = onlyHighlights_              ? SourceChoice::highlights
                     : options.page->pdfs.empty() ? SourceChoice::pages
                                                  : SourceChoice::whole;
    const std::string focus = focus_.trimmed().toStdString();
    options.request.focus = focus.empty() ? std::nullopt : std::optional(focus);
    options.amount = amount_ == Many ? CardAmount::many : CardAmount::normal;
    if (amount_ == ByNumber) {
        options.amount.reset();
        options.request.count = number_;
    } else if (amount_ == Few) {
        const auto usual = expectedCards(CardAmount::normal);
        if (!usual) {
            options.cardsPerPage /= 2;
        } else {
            options.amount.reset();
            options.request.count = std::max(kFewestCards, *usual / 2);
        }
    }
    return options;
}

void GenerationChoices::remember() {
    const GenerationOptions chosen = options();
    Settings& settings = desk_->settings();
    std::vector<Settings::Stored> stored{settings.setText("flashcards.kinds", joinedNames(chosen.request.kinds)),
                                         settings.setText("flashcards.difficulty", enumName(chosen.request.difficulty)),
                                         settings.setBoolean("flashcards.makeSummary", chosen.makeSummary),
                                         settings.setText("flashcards.provider", enumName(chosen.settings.provider))};
    if (amount_ == Usual || amount_ == Many) {
        stored.push_back(settings.setText("flashcards.lastAmount", enumName(*chosen.amount)));
    }
    // A choice between the text and the PDFs is only one where there are both.
    if (!pdfs_.empty() && selection_.isEmpty()) {
        stored.push_back(settings.setText("flashcards.lastSource", enumName(chosen.source)));
    }
    const auto failed = std::ranges::find_if(stored, [](const Settings::Stored& each) { return !each; });
    if (failed != stored.end()) desk_->refuse(failed->error());
}

}  // namespace tessary
