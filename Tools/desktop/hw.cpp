// hw: types and clicks on the private desktop's hardware, from a shell that has joined it.
#include "Desktop/Support/Hardware.h"

#include <charconv>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string_view>

namespace {

using orvane::tests::Button;
using orvane::tests::Hardware;

constexpr const char* usage = R"(usage: hw STEP...
  =KEY  +KEY  -KEY    tap, press or release a key: a keysym's name or a key code in two or three digits
  @X,Y                move the pointer
  b=N   b+N   b-N     click, press or release button N
What is still held at the end is let go.
)";

int number(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        throw std::invalid_argument("no number: " + std::string(text));
    return value;
}

Hardware::KeyCode key(const Hardware& hardware, std::string_view name)
{
    // One digit is the keysym of that digit.
    if (name.size() > 1 && name.find_first_not_of("0123456789") == std::string_view::npos)
        return static_cast<Hardware::KeyCode>(number(name));
    return hardware.key(std::string(name).c_str());
}

template <typename What>
void act(Hardware& hardware, char how, What what)
{
    if (how == '=' || how == '+')
        hardware.press(what);
    if (how == '=' || how == '-')
        hardware.release(what);
}

void perform(Hardware& hardware, std::string_view step)
{
    const std::string_view hows = "=+-";
    if (const std::size_t comma = step.find(','); step.starts_with('@') && comma != std::string_view::npos)
        hardware.movePointer({number(step.substr(1, comma - 1)), number(step.substr(comma + 1))});
    else if (step.size() > 2 && step[0] == 'b' && hows.find(step[1]) != std::string_view::npos)
        act(hardware, step[1], static_cast<Button>(number(step.substr(2))));
    else if (step.size() > 1 && hows.find(step[0]) != std::string_view::npos)
        act(hardware, step[0], key(hardware, step.substr(1)));
    else
        throw std::invalid_argument("no step: " + std::string(step));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs(usage, stderr);
        return 2;
    }
    try {
        Hardware hardware;
        for (int i = 1; i < argc; ++i)
            perform(hardware, argv[i]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "hw: %s\n", error.what());
        return 1;
    }
    return 0;
}
