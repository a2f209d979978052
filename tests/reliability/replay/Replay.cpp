#include "Replay.h"

#include <algorithm>
#include <map>
#include <utility>

#include "databaseName.h"

namespace {

/// How often the power is cut again while the reader recovers from the last cut.
constexpr std::size_t MAX_DEPTH = 3;

/// @return the sizes of a write's parts that end at a sector's end, without the whole write.
std::vector<std::size_t> tornSizes(const Operation& operation)
{
    constexpr std::size_t SECTOR = StoredFile::SECTOR_SIZE;
    std::vector<std::size_t> sizes;
    for (std::size_t size = SECTOR - operation.offset % SECTOR; size < operation.bytes.size();
         size += SECTOR) {
        sizes.push_back(size);
    }
    return sizes;
}

Operation firstPart(const Operation& write, std::size_t size)
{
    Operation part = write;
    part.bytes.resize(size);
    return part;
}

std::string placeOf(const char* kind, std::size_t count, const Recording& recording)
{
    return std::string(kind) + " after " + std::to_string(count) + " of " +
           std::to_string(recording.operations.size()) + " operations";
}

}  // namespace

void Replay::cutInOrder(const Recording& recording, std::size_t every)
{
    m_longestRecovery = {};
    cutEach(recording, every, 0);
    const Recording recovery = std::exchange(m_longestRecovery, {});
    cutEach(recovery, every, 1);
}

void Replay::cutEach(const Recording& recording, std::size_t every, std::size_t depth)
{
    std::size_t met = 0;
    const auto isDue = [&met, every] { return ++met % every == 0; };
    const auto judgeNow = [&](const Disk& disk, std::size_t count) {
        ++(depth == 0 ? m_counts.inOrder : m_counts.inRecovery);
        judge(disk.image(), recording.legalTexts(count, false),
              placeOf("in order,", count, recording), depth);
    };
    Disk disk(recording.start);
    for (std::size_t i = 0; i < recording.operations.size(); ++i) {
        const Operation& operation = recording.operations[i];
        for (const std::size_t size : tornSizes(operation)) {
            if (isDue()) {
                Disk torn = disk;
                torn.apply(firstPart(operation, size));
                judgeNow(torn, i);
            }
        }
        disk.apply(operation);
        if (isDue()) {
            judgeNow(disk, i + 1);
        }
    }
}

void Replay::cut(const Recording& recording, std::size_t states, std::size_t depth)
{
    std::map<std::size_t, std::size_t> cuts;
    for (std::size_t i = 0; i < states; ++i) {
        ++cuts[drawCut(recording)];
    }
    Disk disk(recording.start);
    std::size_t applied = 0;
    for (const auto& [count, times] : cuts) {
        for (; applied < count; ++applied) {
            disk.apply(recording.operations[applied]);
        }
        for (std::size_t i = 0; i < times; ++i) {
            ++(depth == 0 ? m_counts.atRandom : m_counts.inRecovery);
            judge(remains(disk), recording.legalTexts(count, disk.mayRestore()),
                  placeOf("at random,", count, recording), depth);
        }
    }
}

std::size_t Replay::drawCut(const Recording& recording)
{
    constexpr std::size_t NEAR = 4;
    const std::size_t last = recording.operations.size();
    if (m_random.isWithin(50)) {
        return m_random.upTo(last);
    }
    const auto& transactions = recording.transactions;
    const std::size_t end = transactions[m_random.upTo(transactions.size() - 1)].end;
    return std::min(last, end - std::min(end, NEAR) + m_random.upTo(2 * NEAR));
}

Image Replay::remains(const Disk& disk)
{
    constexpr std::size_t INDEX_SIZE = 32768;
    const std::string database = DATABASE_NAME;
    Image image = disk.afterPowerCut(m_random);
    if (image.count(database + "-wal") != 0 && m_random.isWithin(50)) {
        // Nobody syncs the log's index: anything may be left of it.
        image[database + "-shm"] = m_random.garbage(INDEX_SIZE);
    }
    return image;
}

void Replay::judge(const Image& image, const std::set<std::string>& legal, const std::string& where,
                   std::size_t depth)
{
    const Judge::Verdict verdict = m_judge.examine(image, legal);
    const Recording& recovery = verdict.recovery;
    if (!verdict.fault.empty()) {
        m_findings.push_back({where + ": " + verdict.fault, image});
        return;
    }
    if (recovery.operations.size() > m_longestRecovery.operations.size()) {
        m_longestRecovery = recovery;
    }
    if (!recovery.operations.empty() && depth < MAX_DEPTH) {
        cut(recovery, 1, depth + 1);
    }
}
