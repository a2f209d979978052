#include "Recording.h"

std::set<std::string> Recording::legalTexts(std::size_t count, bool mayRestore) const
{
    std::set<std::string> legal = {transactions.front().before};
    for (const Transaction& transaction : transactions) {
        if (count < transaction.end) {
            if (count > transaction.begin) {
                legal.insert(transaction.after);
            }
            break;
        }
        legal = {transaction.after};
        if (mayRestore) {
            // With its journal, a transaction that was committed is rolled back after all.
            legal.insert(transaction.before);
        }
    }
    return legal;
}
