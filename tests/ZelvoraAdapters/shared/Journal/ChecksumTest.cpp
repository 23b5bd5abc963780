#include "ZelvoraAdapters/shared/Journal/internal/Checksum.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace zelvora::tests {

using shared::checksum;
using shared::portableChecksum;

TEST(ChecksumTest, UsesTheCastagnoliPolynomial)
{
    EXPECT_EQ(checksum(0, "123456789"), 0xE3069283U);
    EXPECT_EQ(portableChecksum(0, "123456789"), 0xE3069283U);
    EXPECT_EQ(checksum(0, std::string(32, '\0')), 0x8A9136AAU);
    EXPECT_EQ(portableChecksum(0, std::string(32, '\xFF')), 0x62A8AB43U);
    EXPECT_EQ(checksum(0, ""), 0U);
}

TEST(ChecksumTest, IsTheSameWithAndWithoutTheProcessorsInstruction)
{
    std::mt19937 random { 4 };
    std::string bytes;
    for (int length = 0; length < 300; ++length) {
        EXPECT_EQ(checksum(17, bytes), portableChecksum(17, bytes)) << length;
        bytes.push_back(static_cast<char>(random()));
    }
}

TEST(ChecksumTest, ContinuesFromAnEarlierChecksum)
{
    std::string const text = "what was written in one piece or in two";
    for (std::size_t cut = 0; cut <= text.size(); ++cut)
        EXPECT_EQ(checksum(checksum(0, text.substr(0, cut)), text.substr(cut)), checksum(0, text));
}

}
