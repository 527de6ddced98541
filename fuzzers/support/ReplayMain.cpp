#include "FuzzTarget.h"
#include "Mutation.h"

#include <sys/resource.h>

#include <algorithm>
#include <charconv>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace TOLVGraphing::fuzzing;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kLimitsMemory = false; // A sanitizer reserves terabytes of addresses.
#else
constexpr bool kLimitsMemory = true;
#endif
/// No input may need more: a size that an input asks for must be checked before memory is.
constexpr rlim_t kMemory = rlim_t{4} << 30U;
constexpr std::size_t kLongestMutation = std::size_t{1} << 16U;

struct Settings {
    std::size_t mutations = 0;
    std::size_t leastRefused = 0;
    std::vector<std::filesystem::path> files;
};

std::size_t count(std::string_view option, std::string_view text)
{
    std::size_t result = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc() || end != text.data() + text.size())
        throw std::invalid_argument(std::string(option) + " " + std::string(text) + ": expected a whole number");
    return result;
}

Settings settingsOf(int argumentCount, char** arguments)
{
    Settings settings;
    for (int i = 1; i < argumentCount; ++i) {
        const std::string_view argument = arguments[i];
        const bool isMutations = argument == "--mutations";
        if (!isMutations && argument != "--at-least-refused") {
            settings.files.emplace_back(argument);
            continue;
        }
        if (i + 1 == argumentCount)
            throw std::invalid_argument(std::string(argument) + ": expected a number after it");
        (isMutations ? settings.mutations : settings.leastRefused) = count(argument, arguments[++i]);
    }
    return settings;
}

Bytes contents(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    if (!stream)
        throw std::runtime_error(file.string() + ": cannot be read");
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

/// The named files and all files of the named folders, in the order of their names.
std::vector<std::filesystem::path> filesOf(const std::vector<std::filesystem::path>& named)
{
    std::vector<std::filesystem::path> files;
    for (const std::filesystem::path& path : named) {
        if (!std::filesystem::is_directory(path)) {
            files.push_back(path);
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(path))
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

/// Counts inputs, each once however often it comes.
class Tally {
public:
    void tryOnce(const Bytes& input)
    {
        if (!m_seen.insert(input).second)
            return;
        m_refused += tryInput(input) == Verdict::refused ? 1U : 0U;
    }

    [[nodiscard]] std::size_t tried() const { return m_seen.size(); }
    [[nodiscard]] std::size_t refused() const { return m_refused; }

private:
    std::set<Bytes> m_seen;
    std::size_t m_refused = 0;
};

/// Leaves an input where it can be found after the program was stopped.
void keepLastInput(const Bytes& input, const std::filesystem::path& file)
{
    std::ofstream(file, std::ios::binary | std::ios::trunc).write(reinterpret_cast<const char*>(input.data()), static_cast<std::streamsize>(input.size()));
}

int replay(const Settings& settings, const std::string& program)
{
    Tally tally;
    std::vector<Bytes> saved;
    for (const std::filesystem::path& file : filesOf(settings.files)) {
        saved.push_back(contents(file));
        tally.tryOnce(saved.back());
    }
    const std::size_t savedCount = tally.tried();
    const std::filesystem::path lastInput = program + ".last-input";
    Mutation mutation(std::move(saved), 1);
    for (std::size_t i = 0; i < settings.mutations; ++i) {
        const Bytes input = mutation.next(kLongestMutation);
        keepLastInput(input, lastInput);
        tally.tryOnce(input);
    }
    std::filesystem::remove(lastInput);
    std::cout << savedCount << " saved and " << tally.tried() - savedCount << " made inputs, all distinct; " << tally.refused() << " were refused\n";
    if (tally.refused() >= settings.leastRefused)
        return 0;
    std::cerr << "expected at least " << settings.leastRefused << " refused inputs\n";
    return 1;
}

} // namespace

/// Tries saved inputs and inputs made of them by damage, without libFuzzer. An input that stops the program is left in PROGRAM.last-input.
/// Usage: PROGRAM [--mutations N] [--at-least-refused N] [FILE|FOLDER]...
int main(int argumentCount, char** arguments)
{
    try {
        const Settings settings = settingsOf(argumentCount, arguments);
        if (kLimitsMemory) {
            const rlimit limit{kMemory, kMemory};
            setrlimit(RLIMIT_AS, &limit);
        }
        return replay(settings, arguments[0]);
    } catch (const std::exception& problem) {
        std::cerr << arguments[0] << ": " << problem.what() << "\n";
        return 1;
    }
}
