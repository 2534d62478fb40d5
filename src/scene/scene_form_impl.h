#pragma once

#include "platform/bytes.h"
#include "scene/entity.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

// The form of a scene in files. All numbers have their lowest byte first.
//
//   the four bytes "OSCN", the version of the form (16 bits), then records:
//   tag (16 bits), length (32 bits), and that many bytes
//
// The record `entity` begins an entity, and the records of its fields follow it. A field that has its default
// is left out; an unknown tag is passed over; what a record holds beyond the known is passed over too. Entities
// come in the order of a walk, each before those below it, with its level: 1 at the top of the scene. So the
// tree needs no nesting of records, no lengths known beforehand and no counts. A long text or polygon takes
// several records, one after another. The record `end` is the last.
//
// New fields and kinds take new tags and numbers, which older readers pass over; a new version is for what
// they must not read at all.

namespace orvane
{

// Thrown by the form at the first byte that cannot be; it never leaves CScene::read.
struct MalformedScene
{
};

// The numbers never change their meaning.
enum class SceneTag : std::uint16_t
{
    End = 0,
    Entity = 1,  // kind (16 bits), level (16 bits), handle (16 bytes)
    BackgroundColor = 2,
    HeadLight = 3,

    Name = 16,
    Visible = 17,
    Transform = 18,
    Material = 19,
    DefaultMaterial = 20,
    Points = 21,
    Position = 22,
    Radius = 23,
    Height = 24,
};

// How values of one size turn into numbers and back.
template <class T>
struct SceneCodec;

template <>
struct SceneCodec<float>
{
    using Numbers = std::array<float, 1>;
    static Numbers split(float value) { return {value}; }
    static float join(Numbers const & numbers) { return finite(numbers[0]); }
};
template <>
struct SceneCodec<bool>
{
    using Numbers = std::array<std::uint8_t, 1>;
    static Numbers split(bool value) { return {value}; }
    static bool join(Numbers const & numbers) { return numbers[0] != 0; }
};
template <>
struct SceneCodec<CPoint3D>
{
    using Numbers = std::array<double, 3>;
    static Numbers split(CPoint3D const & point) { return {point.x, point.y, point.z}; }
    static CPoint3D join(Numbers const & numbers) { return finite(CPoint3D{numbers[0], numbers[1], numbers[2]}); }
};
template <>
struct SceneCodec<CTransform>
{
    using Numbers = CTransform::Matrix;
    static Numbers split(CTransform const & transform) { return transform.getMatrix(); }
    static CTransform join(Numbers const & numbers) { return CTransform(numbers); }
};
template <>
struct SceneCodec<CColor>
{
    using Numbers = std::array<float, 3>;
    static Numbers split(CColor const & color) { return {color.red(), color.green(), color.blue()}; }
    static CColor join(Numbers const & numbers)
    {
        return CColor(finite(numbers[0]), finite(numbers[1]), finite(numbers[2]));
    }
};
template <>
struct SceneCodec<CMaterial>
{
    using Numbers = std::array<float, 4>;
    static Numbers split(CMaterial const & material)
    {
        CColor const & color = material.getColor();
        return {color.red(), color.green(), color.blue(), material.getOpacity()};
    }
    static CMaterial join(Numbers const & numbers)
    {
        return CMaterial(SceneCodec<CColor>::join({numbers[0], numbers[1], numbers[2]}), numbers[3]);
    }
};
// Records on their way to or from bytes. An object says its fields once, with `field`; only this class knows
// whether they are being written, or whether one of them is being read.
class CSceneForm
{
public:
    explicit CSceneForm(IByteSink & sink) : sink(&sink) { startWriting(); }
    explicit CSceneForm(IByteSource & source) : source(&source) { startReading(); }

    template <class T>
    void field(SceneTag fieldTag, T & value, T const & absent = T())
    {
        if (source) readField<T>(fieldTag, value);
        else if (!(value == absent)) put(fieldTag, SceneCodec<T>::split(value));
    }
    template <class T>
    void field(SceneTag fieldTag, std::optional<T> & value)
    {
        if (source) readField<T>(fieldTag, value);
        else if (value) put(fieldTag, SceneCodec<T>::split(*value));
    }
    void field(SceneTag fieldTag, CString & text);
    void field(SceneTag fieldTag, CPOINT2DArray & points);

    // Begin an entity; its fields are written next.
    void putEntity(EntityKind kind, int level, CHandle const & handle);
    void putEnd();

    // Goes on to the next record, over what is left of this one. False at the end.
    bool next();
    SceneTag tag() const { return current; }

    // What the present record tells, which is an `Entity`. The kind may be one that is not known here.
    struct EntityHead
    {
        EntityKind kind;
        int level;
        CHandle handle;
    };
    EntityHead takeEntity();

private:
    // Long values travel in pieces, and what is to be written is collected up to this size.
    static constexpr std::size_t pieceSize = 1 << 16;

    template <class T, class Field>
    void readField(SceneTag fieldTag, Field & value)
    {
        if (current == fieldTag) value = SceneCodec<T>::join(take<typename SceneCodec<T>::Numbers>());
    }
    template <class Numbers>
    void put(SceneTag fieldTag, Numbers const & numbers)
    {
        putHead(fieldTag, sizeof numbers);
        for (auto const number : numbers) putNumber(number);
    }
    template <Number T>
    void putNumber(T number)
    {
        auto const bytes = toBytes(number);
        collected.insert(collected.end(), bytes.begin(), bytes.end());
    }
    // The numbers that the rest of the record begins with.
    template <class Numbers>
    Numbers take()
    {
        using T = typename Numbers::value_type;
        std::array<unsigned char, sizeof(Numbers)> bytes;
        takeBytes(bytes.data(), bytes.size());
        Numbers numbers;
        for (std::size_t each = 0; each < numbers.size(); ++each)
        {
            NumberBytes<T> part;
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(each * sizeof(T)), sizeof(T), part.begin());
            numbers[each] = fromBytes<T>(part);
        }
        return numbers;
    }
    template <Number T>
    T takeNumber()
    {
        return take<std::array<T, 1>>()[0];
    }
    void startWriting();
    void startReading();
    void putHead(SceneTag fieldTag, std::size_t length);
    // Sends what was collected on its way when it has become that much.
    void flush(std::size_t atLeast);
    void takeBytes(void * data, std::size_t size);

    // One of the two.
    IByteSink * sink = nullptr;
    IByteSource * source = nullptr;
    std::vector<unsigned char> collected;
    // The record that is being read, and how many of its bytes are still to come.
    SceneTag current = SceneTag::End;
    std::size_t remaining = 0;
};

}  // namespace orvane
