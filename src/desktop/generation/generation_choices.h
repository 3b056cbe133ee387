#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <vector>

#include "desktop/desk/desk.h"
#include "desktop/desk/inquiry.h"

namespace tessary {

/// What the user asks for before cards are written: of what, which, how many, and by whom. Begins with what was asked
/// for last time.
class GenerationChoices : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::Desk* desk READ desk WRITE setDesk NOTIFY deskChanged)
    Q_PROPERTY(QString pageTitle READ pageTitle NOTIFY changed)
    /// The page's text, the selected text when there is any, then each PDF.
    Q_PROPERTY(QStringList sources READ sources NOTIFY opened)
    /// Where the PDFs begin in `sources`.
    Q_PROPERTY(int firstPdf READ firstPdf NOTIFY opened)
    /// For each of `sources`.
    Q_PROPERTY(QList<bool> chosen READ chosen NOTIFY changed)
    Q_PROPERTY(bool onlyHighlights READ onlyHighlights WRITE setOnlyHighlights NOTIFY changed)
    /// False once it is known that nothing is marked in the PDFs.
    Q_PROPERTY(bool hasHighlights READ hasHighlights NOTIFY changed)
    Q_PROPERTY(bool basic READ basic WRITE setBasic NOTIFY changed)
    Q_PROPERTY(bool cloze READ cloze WRITE setCloze NOTIFY changed)
    Q_PROPERTY(bool multipleChoice READ multipleChoice WRITE setMultipleChoice NOTIFY changed)
    Q_PROPERTY(bool summary READ summary WRITE setSummary NOTIFY changed)
    Q_PROPERTY(Amount amount READ amount WRITE setAmount NOTIFY changed)
    /// For `ByNumber`, from 1 to `mostCards`.
    Q_PROPERTY(int number READ number WRITE setNumber NOTIFY changed)
    Q_PROPERTY(int mostCards READ mostCards NOTIFY changed)
    /// "About 12 cards"; empty when it can't be told.
    Q_PROPERTY(QString amountText READ amountText NOTIFY changed)
    /// 0 basic, 1 standard, 2 advanced.
    Q_PROPERTY(int difficulty READ difficulty WRITE setDifficulty NOTIFY changed)
    Q_PROPERTY(QString focus READ focus WRITE setFocus NOTIFY changed)
    Q_PROPERTY(QStringList providers READ providers CONSTANT)
    /// Into `providers`.
    Q_PROPERTY(int provider READ provider WRITE setProvider NOTIFY changed)
    /// What it costs or is, in a few words.
    Q_PROPERTY(QString providerDetail READ providerDetail NOTIFY changed)
    /// Where the text goes, or what to think of; may be empty.
    Q_PROPERTY(QString providerNote READ providerNote NOTIFY changed)
    /// Nothing the user owns leaves this computer.
    Q_PROPERTY(bool staysHere READ staysHere NOTIFY changed)
    Q_PROPERTY(Readiness readiness READ readiness NOTIFY changed)
    /// Why the provider can't run; empty unless `Unready`.
    Q_PROPERTY(QString providerProblem READ providerProblem NOTIFY changed)
    /// What is missing, as a sentence; empty when the run can begin.
    Q_PROPERTY(QString problem READ problem NOTIFY changed)

public:
    enum Amount { Few, Usual, Many, ByNumber };
    Q_ENUM(Amount)
    enum Readiness { Looking, Ready, Unready };
    Q_ENUM(Readiness)

    [[nodiscard]] Desk* desk() const { return desk_; }
    void setDesk(Desk* desk);
    [[nodiscard]] PageId page() const { return page_; }
    [[nodiscard]] QString pageTitle() const;
    [[nodiscard]] QStringList sources() const;
    [[nodiscard]] int firstPdf() const { return selection_.isEmpty() ? 1 : 2; }
    [[nodiscard]] QList<bool> chosen() const { return chosen_; }
    [[nodiscard]] bool onlyHighlights() const { return onlyHighlights_; }
    void setOnlyHighlights(bool only);
    [[nodiscard]] bool hasHighlights() const { return facts_.mayHaveMarks; }
    [[nodiscard]] bool basic() const { return wants(FlashcardKind::basic); }
    void setBasic(bool wanted) { setWanted(FlashcardKind::basic, wanted); }
    [[nodiscard]] bool cloze() const { return wants(FlashcardKind::cloze); }
    void setCloze(bool wanted) { setWanted(FlashcardKind::cloze, wanted); }
    [[nodiscard]] bool multipleChoice() const { return wants(FlashcardKind::multipleChoice); }
    void setMultipleChoice(bool wanted) { setWanted(FlashcardKind::multipleChoice, wanted); }
    [[nodiscard]] bool summary() const { return options_.makeSummary; }
    void setSummary(bool wanted) { change(options_.makeSummary, wanted); }
    [[nodiscard]] Amount amount() const { return amount_; }
    void setAmount(Amount amount) { change(amount_, amount); }
    [[nodiscard]] int number() const { return number_; }
    void setNumber(int number) { change(number_, std::clamp(number, 1, mostCards())); }
    [[nodiscard]] int mostCards() const { return static_cast<int>(options_.maxCards); }
    [[nodiscard]] QString amountText() const;
    [[nodiscard]] int difficulty() const { return static_cast<int>(options_.request.difficulty); }
    void setDifficulty(int difficulty) {
        change(options_.request.difficulty, static_cast<CardDifficulty>(std::clamp(difficulty, 0, 2)));
    }
    [[nodiscard]] QString focus() const { return focus_; }
    void setFocus(const QString& focus) { change(focus_, focus); }
    [[nodiscard]] static QStringList providers();
    [[nodiscard]] int provider() const { return static_cast<int>(options_.settings.provider); }
    void setProvider(int provider);
    [[nodiscard]] QString providerDetail() const;
    [[nodiscard]] QString providerNote() const;
    [[nodiscard]] bool staysHere() const;
    [[nodiscard]] Readiness readiness() const { return readiness_; }
    [[nodiscard]] QString providerProblem() const { return providerProblem_; }
    [[nodiscard]] QString problem() const;

    /// Begins with a page, and what of its text is selected.
    Q_INVOKABLE void open(const QString& page, const QString& selection);
    /// Nobody looks at the choices any more.
    Q_INVOKABLE void close();
    /// The page's text and the selected text exclude each other; only highlights are of PDFs alone.
    Q_INVOKABLE void choose(int source, bool wanted);
    /// Sees whether the provider can run now.
    Q_INVOKABLE void lookAtProvider();

    [[nodiscard]] GenerationOptions options() const;
    /// For the next time, in the settings.
    void remember();

Q_SIGNALS:
    void deskChanged();
    void opened();
    void changed();

private:
    /// What is in the PDFs, as far as somebody has looked.
    struct PdfFacts {
        std::vector<int> pages;  ///< of each; empty before
        bool mayHaveMarks = true;
    };

    template <class T>
    void change(T& member, const T& value) {
        if (member == value) return;
        member = value;
        Q_EMIT changed();
    }
    [[nodiscard]] bool wants(FlashcardKind kind) const { return options_.request.kinds.contains(kind); }
    void setWanted(FlashcardKind kind, bool wanted);
    void chooseAsLastTime(SourceChoice last);
    void lookIntoPdfs();
    [[nodiscard]] PageSource whole() const;
    [[nodiscard]] PageSource sourceToRead() const;
    /// Absent when the source would have to be read first.
    [[nodiscard]] std::optional<std::int64_t> expectedCards(CardAmount amount) const;

    Desk* desk_ = nullptr;
    PageId page_;
    QString selection_;
    GenerationOptions options_;  ///< without its page, amount and focus, which the members below tell
    std::vector<std::filesystem::path> pdfs_;
    QList<bool> chosen_;
    bool onlyHighlights_ = false;
    Amount amount_ = Usual;
    int number_ = 12;
    QString focus_;
    PdfFacts facts_;
    Readiness readiness_ = Looking;
    QString providerProblem_;
    Inquiry<PdfFacts> pdfInquiry_;
    Inquiry<QString> providerInquiry_;  ///< a problem; empty when there is none
};

}  // namespace tessary
