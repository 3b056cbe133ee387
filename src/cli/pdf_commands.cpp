#include <filesystem>

#include "ai/page_source.h"
#include "ai/text_cleaning.h"
#include "app/pdf_file.h"
#include "base/text.h"
#include "cli/identifiers.h"
#include "cli/interrupts.h"
#include "cli/named_values.h"
#include "cli/page_commands.h"
#include "cli/progress_line.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

// ---- attach ----

struct AttachArgs {
    std::string page;
    std::vector<std::string> files;
};

std::string nameOf(const fs::path& file) { return onOneLine(file.filename().string()); }

/// Why the AI can read nothing in a PDF; absent when it can.
std::optional<std::string> whyUnreadable(const fs::path& file, PdfReader& pdfs, const ProgramStreams& streams,
                                         const Interrupts& interrupts) {
    const auto document = pdfs.open(file);
    if (!document) {
        switch (document.error()) {
            case PdfProblem::encrypted: return "It needs a password.";
            case PdfProblem::damaged: return "It is damaged.";
            case PdfProblem::missing: return "It can't be opened.";
        }
    }
    ProgressLine line(streams);
    const int pages = (*document)->pageCount();
    for (int page = 0; page < pages && !interrupts.raised(); ++page) {
        if (!trimmed((*document)->pageText(page)).empty()) return std::nullopt;
        line.show(static_cast<double>(page) / pages, fmt::format("Reading page {} of {}", page + 1, pages),
                  ProgressLine::Weight::detail);
    }
    return interrupts.raised() ? std::nullopt
                               : std::optional<std::string>("Its pages are pictures without a text layer.");
}

void attachPdfs(CommandContext& context, const AttachArgs& args) {
    JournalStore& library = context.open(WorkspaceUse::change).library();
    JournalEntry page = findPage(library, args.page);
    for (const std::string& file : args.files) {
        if (const auto problem = whyNoPdf(context.system().files, file)) throw CommandFailure(*problem);
    }
    const Interrupts interrupts;
    for (const fs::path file : args.files) {
        const std::optional<std::string> problem =
            whyUnreadable(file, context.ai().pdfs(), context.streams(), interrupts);
        if (interrupts.raised()) throw CommandFailure("Cancelled. Nothing was attached.");
        const std::string name = valueOrFail(library.addMedia(MediaKind::pdf, file));
        const std::vector<std::string> present = pdfsOf(page);
        if (std::ranges::find(present, name) == present.end()) page.pdfAttachments.push_back(name);
        if (problem) {
            context.err() << nameOf(file) << ": Couldn't read any text in this PDF. " << *problem << '\n';
        }
    }
    const PageId id = page.id;
    valueOrFail(library.updatePage(std::move(page)));
    const JournalEntry& attached = *library.entries().find(id);
    if (context.json()) return context.printJsonOf(attached);
    context.out() << "Attached " << counted(args.files.size(), "PDF", "PDFs") << " to \"" << titleOf(attached)
                  << "\". Make cards of it: tessary-cli generate " << shortId(id) << '\n';
}

// ---- text ----

struct TextArgs {
    std::string page;
    std::string source = "whole";
    bool cleaned = false;
};

void printText(CommandContext& context, const TextArgs& args) {
    const JournalStore& library = context.open(WorkspaceUse::read).library();
    const auto choice = namedOrFail<SourceChoice>("--source", args.source);
    const PageSource source = sourceOf(findPage(library, args.page), library);
    const Interrupts interrupts;
    std::stop_source stop;
    ProgressLine line(context.streams());
    const auto progress = [&](int page, int pages) {
        if (interrupts.raised()) stop.request_stop();
        line.show(static_cast<double>(page - 1) / pages, fmt::format("Reading page {} of {}", page, pages),
                  ProgressLine::Weight::detail);
    };
    const AIResult<std::string> raw = gatherText(source, choice, context.ai().pdfs(), progress, stop.get_token());
    if (!raw) throw CommandFailure(raw.error().kind == AIError::Kind::cancelled ? "Cancelled." : raw.error().text());
    const std::string text = args.cleaned ? cleanedText(*raw, context.system().text) : *raw;
    if (text.empty()) throw CommandFailure(noTextError(source, choice).text());
    if (context.json()) {
        return context.printJsonObject([&](auto member) {
            member("source", std::string(enumName(choice)));
            member("text", text);
        });
    }
    context.out() << withoutControls(text) << (text.ends_with('\n') ? "" : "\n");
}

}  // namespace

void addPdfCommands(CLI::App& pages, Action& chosen) {
    addCommand<AttachArgs>(
        pages, chosen, "attach", "Attach PDFs to a page",
        [](CLI::App& command, AttachArgs& args) {
            addText(command, "PAGE", args.page, "The page")->required();
            addText(command, "FILE", args.files, "PDF files")->required();
        },
        attachPdfs);
    addCommand<TextArgs>(
        pages, chosen, "text", "Print what the AI reads of a page",
        [](CLI::App& command, TextArgs& args) {
            addText(command, "PAGE", args.page, "The page")->required();
            addText(command, "--source", args.source,
                    "whole (its text and its PDFs), pages (its text) or highlights (what is marked in its PDFs)");
            command.add_flag("--cleaned", args.cleaned, "As it is sent: words and lines joined");
        },
        printText);
}

}  // namespace tessary
