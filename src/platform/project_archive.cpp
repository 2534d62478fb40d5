#include "platform/project_archive.h"

#include <algorithm>
#include <climits>

#include "platform/file.h"
#include "platform/time.h"

CProjectArchive::CProjectArchive(CFile * file, unsigned int mode, bool useVersion) : CArchive(file, mode)
{
    if (useVersion) Serialize();
}

void CProjectArchive::Serialize()
{
    exchange(version);
    version = std::clamp(version, 1, currentVersion);
    if (IsLoading()) SetObjectSchema(static_cast<unsigned int>(version));
}

void CProjectArchive::refuse(int cause)
{
    CString const path = GetFile() ? GetFile()->GetFilePath() : CString();
    Abort();
    throw CArchiveException(cause, path);
}

int CProjectArchive::exchangeCount(int count)
{
    exchange(count);
    if (count < 0) refuse();
    return count;
}

namespace
{

// A length is one byte, or 255 and two bytes, or 255, 65,535 and four bytes.
constexpr unsigned char longer = 255;
constexpr std::uint16_t longest = 65535;

void writeLength(CProjectArchive & archive, std::uint32_t length)
{
    auto const put = [&](auto number) { orvane::writeNumber(archive, number); };
    if (length < longer) return put(static_cast<unsigned char>(length));
    put(longer);
    if (length < longest - 1) return put(static_cast<std::uint16_t>(length));
    put(longest);
    put(length);
}

std::uint32_t readLength(CProjectArchive & archive)
{
    auto const take = [&]<class T>(T number) -> std::uint32_t {
        orvane::NumberBytes<T> bytes;
        archive.readExactly(bytes.data(), bytes.size());
        number = orvane::fromBytes<T>(bytes);
        return number;
    };
    if (std::uint32_t const length = take(longer); length != longer) return length;
    if (std::uint32_t const length = take(longest); length != longest) return length;
    return take(std::uint32_t{});
}

CString readText(CProjectArchive & archive, std::uint32_t length)
{
    // In pieces, since the stream may hold less than it says.
    char piece[4096];
    CString text;
    while (length > 0)
    {
        std::uint32_t const size = std::min<std::uint32_t>(length, sizeof piece);
        archive.readExactly(piece, size);
        archive.claimMemory(size);
        text += CString(piece, static_cast<int>(size));
        length -= size;
    }
    return text;
}

}  // namespace

void CProjectArchive::exchange(CString & text)
{
    if (IsLoading())
    {
        std::uint32_t const length = readLength(*this);
        if (length > INT_MAX) refuse();
        text = readText(*this, length);
        return;
    }
    writeLength(*this, static_cast<std::uint32_t>(text.GetLength()));
    write(text.view().data(), static_cast<std::size_t>(text.GetLength()));
}

void CProjectArchive::exchange(CTime & time)
{
    int seconds = static_cast<int>(time.GetTime());
    exchange(seconds);
    time = CTime(seconds);
}

void CProjectArchive::exchange(CTimeSpan & span)
{
    int seconds = static_cast<int>(span.GetTotalSeconds());
    exchange(seconds);
    span = CTimeSpan(seconds);
}

void checkMarker(CProjectArchive & archive)
{
    int marker = 0x01234567;
    archive.exchange(marker);
}
