// An argument vector from one text: "prog,-o,,~" is "prog", "-o", "" and a null pointer.
#ifndef KORBASE_TESTS_SUPPORT_TEXTS_H
#define KORBASE_TESTS_SUPPORT_TEXTS_H

#include <sstream>
#include <string>
#include <vector>

class Texts {
public:
    explicit Texts(std::string const& list) {
        std::istringstream in(list + ',');
        for (std::string text; !list.empty() && std::getline(in, text, ',');) texts.push_back(text);
        for (std::string& text : texts) pointers.push_back(text == "~" ? nullptr : text.data());
    }
    int Count() const { return static_cast<int>(pointers.size()); }
    char** Vector() { return pointers.data(); }

private:
    std::vector<std::string> texts;
    std::vector<char*> pointers;
};

#endif
