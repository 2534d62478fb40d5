#pragma once

#include <algorithm>
#include <cmath>
#include <regex>
#include <string>
#include <vector>

namespace orvane::test
{

// What an SVG of ours draws within one of the pictures nested in it, one line for each element: boxes, shapes and lines
// with their colour and ends, and texts. Places are told in the units given, rounded, so that the widths of fonts play
// no part.
class SvgStructure
{
public:
    struct Units
    {
        double across, down;
    };

    // `nested` counts from 0 in the order in which the nested pictures begin. Elements higher than `highest`, such as
    // backgrounds, and the thin lines of a grid are left out.
    SvgStructure(std::string const & svg, int nested, Units units, double highest) : units(units), highest(highest)
    {
        static std::regex const element("<(/svg|svg|rect|path|text)([^>]*?)/?>([^<]*)");
        int begun = -2;
        for (std::sregex_iterator each(svg.begin(), svg.end(), element), end; each != end; ++each)
        {
            if ((*each)[1] == "svg") ++begun;
            bool const isIn = begun == nested && (*each)[1] != "svg" && (*each)[1] != "/svg";
            if ((*each)[1] == "/svg" && begun == nested) break;
            if (isIn) add((*each)[1], (*each)[2], (*each)[3]);
        }
    }

    std::string text;

private:
    static std::string attribute(std::string const & all, std::string const & name)
    {
        std::smatch found;
        return std::regex_search(all, found, std::regex(" " + name + "=\"([^\"]*)\"")) ? found[1].str() : "";
    }
    static double number(std::string const & all, std::string const & name) { return std::stod(attribute(all, name)); }

    std::string across(double x) const { return std::to_string(std::lround(x / units.across)); }
    std::string down(double y) const { return std::to_string(static_cast<int>(std::floor(y / units.down))); }

    void add(std::string const & tag, std::string const & attributes, std::string const & content)
    {
        if (tag == "text")
            text += "text " + content + " at " + down(number(attributes, "y")) + '\n';
        else if (tag == "rect") addBox(attributes);
        else addPath(attributes);
    }
    void addBox(std::string const & attributes)
    {
        double const left = number(attributes, "x"), top = number(attributes, "y");
        if (number(attributes, "height") > highest) return;
        std::string const fill = attribute(attributes, "fill");
        text += "box " + (fill == "none" ? "round" : fill) + ' ' + across(left) + ".." +
                across(left + number(attributes, "width")) + " at " + down(top) + '\n';
    }
    void addPath(std::string const & attributes)
    {
        struct Place
        {
            double x, y;
        };
        std::vector<Place> places;
        std::string const way = attribute(attributes, "d");
        static std::regex const pair("[ML]([-0-9.e]+) ([-0-9.e]+)");
        for (std::sregex_iterator each(way.begin(), way.end(), pair), end; each != end; ++each)
            places.push_back({std::stod((*each)[1]), std::stod((*each)[2])});
        std::string const fill = attribute(attributes, "fill");
        Place const first = places.front(), last = places.back();
        if (fill != "none")
        {
            auto const [low, high] = std::ranges::minmax(places, {}, &Place::x);
            text += "shape " + fill + ' ' + across(low.x) + ".." + across(high.x) + " at " + down(first.y) + '\n';
        }
        else if (places.size() > 2 || attribute(attributes, "stroke-width") != "0.6")
            text += "line " + attribute(attributes, "stroke") + ' ' + across(first.x) + " at " + down(first.y) + " to " +
                    across(last.x) + " at " + down(last.y) + '\n';
    }

    Units units;
    double highest;
};

}  // namespace orvane::test
