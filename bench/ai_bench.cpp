#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "ai/card_job.h"
#include "ai/source_chunks.h"
#include "ai/text_cleaning.h"
#include "platform/adapters/icu/icu_text_services.h"
#include "platform/adapters/poppler/poppler_pdf_reader.h"
#include "support/pdf_maker.h"

namespace tessary {
namespace {

constexpr std::size_t kSourceSize = std::size_t{8} << 20;  // bytes
constexpr std::size_t kChunk = 40000;                      // characters

enum class Script { english, german, japanese };

/// Text as a PDF gives it: short lines, words split at their ends, a marker for each page.
std::string madeUpSource(Script script) {
    const std::string line = script == Script::english ? "The mitochondrion makes most of the energy of a phosphor-\n"
                             : script == Script::german
                                 ? "Die Zellatmung läuft über drei größere Stufen; für die Oxi-\n"
                                 : "細胞の中でミトコンドリアはエネルギーを作る。酸素を使い、\n";
    std::string text;
    for (int i = 0; text.size() < kSourceSize; ++i) {
        if (i % 40 == 0) text += "\n\n[Page " + std::to_string(i / 40 + 1) + "]\n";
        text += line;
        text += script == Script::japanese ? "二酸化炭素と水が残る。\n"
                                           : "ylation in  the\tinner membrane. Then it goes on.\n";
    }
    return text;
}

void cleanAndChunk(benchmark::State& state, Script script) {
    const IcuTextServices text;
    const std::string source = madeUpSource(script);
    for (auto _ : state) benchmark::DoNotOptimize(chunked(cleanedText(source, text), kChunk, text));
    state.SetBytesProcessed(static_cast<std::int64_t>(source.size()) * state.iterations());
}
BENCHMARK_CAPTURE(cleanAndChunk, english, Script::english)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(cleanAndChunk, german, Script::german)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(cleanAndChunk, japanese, Script::japanese)->Unit(benchmark::kMillisecond);

/// The least that the same could cost: one pass that looks at every byte and writes it.
void sourceOnePass(benchmark::State& state) {
    const std::string source = madeUpSource(Script::english);
    std::string copy;
    for (auto _ : state) {
        copy.clear();
        copy.reserve(source.size());
        for (const char byte : source) copy += byte == '\t' ? ' ' : byte;
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(source.size()) * state.iterations());
}
BENCHMARK(sourceOnePass)->Unit(benchmark::kMillisecond);

std::string madeUpReply(std::size_t size) {
    std::string reply = R"({"cards":[)";
    for (int i = 0; reply.size() < size; ++i) {
        if (i > 0) reply += ',';
        reply +=
            R"({"kind":"multiple_choice","front":"Which organelle makes ATP number )" + std::to_string(i) +
            R"(?","back":"The mitochondrion","options":["The nucleus","The mitochondrion","The ribosome","The vacuole"],)"
            R"("correct_index":1,"explanation":"It holds the respiratory chain.","page":12})";
    }
    return reply + "]}";
}

/// A reply of one megabyte into cards.
void decodeReply(benchmark::State& state) {
    const IcuTextServices text;
    const std::string reply = madeUpReply(std::size_t{1} << 20);
    CardRequest request;
    request.kinds = {FlashcardKind::multipleChoice};
    for (auto _ : state) benchmark::DoNotOptimize(decodeCards(reply, request, text));
    state.SetBytesProcessed(static_cast<std::int64_t>(reply.size()) * state.iterations());
}
BENCHMARK(decodeReply)->Unit(benchmark::kMillisecond);

/// The reply taken for JSON and nothing more.
void parseReplyOnly(benchmark::State& state) {
    const std::string reply = madeUpReply(std::size_t{1} << 20);
    for (auto _ : state) {
        const JsonDocument document(reply);
        benchmark::DoNotOptimize(document.root());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(reply.size()) * state.iterations());
}
BENCHMARK(parseReplyOnly)->Unit(benchmark::kMillisecond);

/// Opens a PDF of so many pages and reads the first.
void firstPdfPage(benchmark::State& state) {
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "tessary-bench.pdf";
    std::ofstream(file, std::ios::binary) << makePdf(std::vector<std::string>(
        static_cast<std::size_t>(state.range()), "The mitochondrion makes most of the energy of a cell.\nMore of it."));
    PopplerPdfReader reader;
    for (auto _ : state) {
        const auto document = reader.open(file);
        if (!document || (*document)->pageText(0).empty()) state.SkipWithError("no text");
    }
    std::filesystem::remove(file);
}
BENCHMARK(firstPdfPage)->Arg(1)->Arg(500)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tessary
