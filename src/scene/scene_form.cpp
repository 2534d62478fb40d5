#include "scene/scene.h"
#include "scene/scene_form_impl.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace orvane
{

namespace
{

using Mark = std::array<unsigned char, 4>;
constexpr Mark formMark = {'O', 'S', 'C', 'N'};
constexpr std::uint16_t formVersion = 1;
constexpr std::size_t headSize = sizeof(std::uint16_t) + sizeof(std::uint32_t);

}  // namespace

void CSceneForm::startWriting()
{
    collected.assign(formMark.begin(), formMark.end());
    putNumber(formVersion);
}

void CSceneForm::startReading()
{
    remaining = formMark.size() + sizeof formVersion;
    auto const found = take<Mark>();
    if (found != formMark || takeNumber<std::uint16_t>() != formVersion) throw MalformedScene();
}

void CSceneForm::putHead(SceneTag fieldTag, std::size_t length)
{
    flush(pieceSize);
    putNumber(static_cast<std::uint16_t>(fieldTag));
    putNumber(static_cast<std::uint32_t>(length));
}

void CSceneForm::flush(std::size_t atLeast)
{
    if (collected.size() < atLeast) return;
    sink->write(collected.data(), collected.size());
    collected.clear();
}

void CSceneForm::field(SceneTag fieldTag, CString & text)
{
    if (sink)
    {
        std::string_view const bytes = text.view();
        for (std::size_t at = 0; at < bytes.size(); at += pieceSize)
        {
            std::string_view const piece = bytes.substr(at, pieceSize);
            putHead(fieldTag, piece.size());
            collected.insert(collected.end(), piece.begin(), piece.end());
        }
    }
    else if (current == fieldTag)
    {
        // Grown as bytes arrive: the stated length may lie.
        std::string piece;
        while (remaining > 0)
        {
            piece.resize(std::min(remaining, pieceSize));
            takeBytes(piece.data(), piece.size());
            text += CString(std::string_view(piece));
        }
    }
}

void CSceneForm::field(SceneTag fieldTag, CPOINT2DArray & points)
{
    constexpr int perRecord = pieceSize / sizeof(CPoint2D);
    if (sink)
    {
        for (int first = 0; first < points.GetSize(); first += perRecord)
        {
            int const count = std::min(perRecord, points.GetSize() - first);
            putHead(fieldTag, static_cast<std::size_t>(count) * sizeof(CPoint2D));
            for (int each = first; each < first + count; ++each)
            {
                putNumber(points.GetAt(each).x);
                putNumber(points.GetAt(each).y);
            }
        }
    }
    else if (current == fieldTag)
    {
        while (remaining >= sizeof(CPoint2D))
        {
            auto const [x, y] = take<std::array<double, 2>>();
            points.Add(finite(CPoint2D{x, y}));
        }
    }
}

void CSceneForm::putEntity(EntityKind kind, int level, CHandle const & handle)
{
    auto const guid = handle.getGUID().bytes();
    putHead(SceneTag::Entity, 2 * sizeof(std::uint16_t) + guid.size());
    putNumber(static_cast<std::uint16_t>(kind));
    putNumber(static_cast<std::uint16_t>(level));
    collected.insert(collected.end(), guid.begin(), guid.end());
}

CSceneForm::EntityHead CSceneForm::takeEntity()
{
    auto const [kind, level] = take<std::array<std::uint16_t, 2>>();
    auto const guid = take<_GUID::Bytes>();
    return {static_cast<EntityKind>(kind), level, _GUID::fromBytes(guid)};
}

void CSceneForm::putEnd()
{
    putHead(SceneTag::End, 0);
    flush(0);
}

bool CSceneForm::next()
{
    std::array<unsigned char, 4096> passedOver;
    while (remaining > 0) takeBytes(passedOver.data(), std::min(remaining, passedOver.size()));
    std::array<unsigned char, headSize> head;
    remaining = headSize;
    takeBytes(head.data(), headSize);
    current = static_cast<SceneTag>(fromBytes<std::uint16_t>({head[0], head[1]}));
    remaining = fromBytes<std::uint32_t>({head[2], head[3], head[4], head[5]});
    return current != SceneTag::End;
}

void CSceneForm::takeBytes(void * data, std::size_t size)
{
    if (size > remaining || source->read(data, size) != size) throw MalformedScene();
    remaining -= size;
}

}  // namespace orvane
