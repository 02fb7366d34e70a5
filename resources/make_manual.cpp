// Makes the manual: one HTML file of the chapters of all languages.
//
//     make_manual OUTPUT FOLDER
//
// FOLDER holds style.css and a folder of chapters for each language below. A chapter is a piece of HTML in a file
// "NN_name.html": NN gives its place, "name" its anchor. It begins with its title as <h2>; sections that the table of
// contents names are <h3 id="...">. Links to chapters and sections are written without the language
// (href="#name"), so that a chapter reads the same in each. Numbers, contents and the links between the languages
// are made here. The output appears when it is whole.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Language {
    std::string code, name, title, contents, toContents;
};

const Language languages[] = {
    {"ja", "日本語", "Relvane マニュアル", "目次", "▲ 目次へ戻る"},
    {"en", "English", "Relvane manual", "Contents", "▲ back to the contents"},
};

struct Section {
    std::string anchor, title;
};

struct Chapter {
    std::string anchor, title, text;
    std::vector<Section> sections;
};

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return content;
}

Chapter readChapter(const fs::path& path) {
    static const std::regex fileName(R"(\d+_(.+))");
    static const std::regex title(R"(^\s*<h2>([^<]+)</h2>)");
    static const std::regex section(R"re(<h3 id="([^"]+)">([^<]+)</h3>)re");
    Chapter chapter;
    chapter.text = contentOf(path);
    std::smatch found;
    const std::string stem = path.stem().string();
    if (!std::regex_match(stem, found, fileName)) {
        throw std::runtime_error(path.string() + ": the name is not NN_name.html");
    }
    chapter.anchor = found[1];
    if (!std::regex_search(chapter.text, found, title)) {
        throw std::runtime_error(path.string() + ": does not begin with its title as <h2>");
    }
    chapter.title = found[1];
    chapter.text.erase(0, static_cast<std::size_t>(found.length()));
    for (std::sregex_iterator each(chapter.text.begin(), chapter.text.end(), section), end; each != end;
         ++each) {
        chapter.sections.push_back({(*each)[1], (*each)[2]});
    }
    return chapter;
}

std::vector<Chapter> readChapters(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".html") {
            files.push_back(entry.path());
        }
    }
    std::ranges::sort(files);
    std::vector<Chapter> chapters;
    std::ranges::transform(files, std::back_inserter(chapters), readChapter);
    return chapters;
}

std::string link(const std::string& code, const std::string& anchor, const std::string& text) {
    return "<a href=\"#" + code + (anchor.empty() ? "" : "-" + anchor) + "\">" + text + "</a>";
}

std::string anchor(const std::string& code, const std::string& name) {
    return "<a name=\"" + code + (name.empty() ? "" : "-" + name) + "\"></a>";
}

// Links to the same place in the other languages.
std::string otherLanguages(const Language& language, const std::string& place) {
    std::string links;
    for (const Language& other : languages) {
        if (other.code != language.code) {
            links += " " + link(other.code, place, other.name);
        }
    }
    return links;
}

std::string contents(const Language& language, const std::vector<Chapter>& chapters) {
    std::string html = "<h1>" + anchor(language.code, "") + language.title + "</h1>\n<p>" +
                       otherLanguages(language, "") + "</p>\n<p class=\"contents\"><b>" + language.contents +
                       "</b></p>\n<table class=\"contents\" cellspacing=\"0\" cellpadding=\"3\">\n";
    for (std::size_t i = 0; i < chapters.size(); ++i) {
        html += "<tr><td align=\"right\">" + std::to_string(i + 1) + "</td><td>" +
                link(language.code, chapters[i].anchor, chapters[i].title) + "</td><td>";
        for (const Section& section : chapters[i].sections) {
            html += (&section == chapters[i].sections.data() ? "" : " ・ ") +
                    link(language.code, section.anchor, section.title);
        }
        html += "</td></tr>\n";
    }
    return html + "</table>\n";
}

// The text of a chapter with the language in its links and anchors. Full-width blanks stand in captions of the program
// and are kept as they are, where HTML would make one narrow blank of them.
std::string inLanguage(const Language& language, const std::string& text) {
    static const std::regex linkInside("href=\"#");
    static const std::regex section(R"re(<h3 id="([^"]+)">)re");
    static const std::regex wideBlanks("(?:　)+");
    std::string html = std::regex_replace(text, linkInside, "href=\"#" + language.code + "-");
    html = std::regex_replace(html, section, "<h3><a name=\"" + language.code + "-$1\"></a>");
    return std::regex_replace(html, wideBlanks, "<span style=\"white-space: pre\">$&</span>");
}

std::string inFull(const Language& language, const Chapter& chapter, std::size_t number) {
    return "\n<table class=\"chapter\" width=\"100%\" cellspacing=\"0\" cellpadding=\"6\"><tr><td><h2>" +
           anchor(language.code, chapter.anchor) + std::to_string(number) + ". " + chapter.title +
           "</h2></td></tr></table>" + inLanguage(language, chapter.text) + "<p class=\"foot\">" +
           link(language.code, "", language.toContents) + otherLanguages(language, chapter.anchor) + "</p>\n";
}

std::string manual(const fs::path& folder) {
    std::string html = "<!DOCTYPE html>\n<html lang=\"ja\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
                       languages[0].title + "</title>\n<style>\n" + contentOf(folder / "style.css") +
                       "</style>\n</head>\n<body>\n";
    for (const Language& language : languages) {
        const std::vector<Chapter> chapters = readChapters(folder / language.code);
        if (&language != languages) {
            html += "\n<p> </p>\n<p> </p>\n";
        }
        html += contents(language, chapters);
        for (std::size_t i = 0; i < chapters.size(); ++i) {
            html += inFull(language, chapters[i], i + 1);
        }
    }
    return html + "</body>\n</html>\n";
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_manual OUTPUT FOLDER\n");
        return 2;
    }
    try {
        const std::string html = manual(argv[2]);
        const fs::path partial = std::string(argv[1]) + ".part";
        std::ofstream file(partial, std::ios::binary);
        file << html;
        file.close();
        if (!file) {
            throw std::runtime_error("cannot write " + partial.string());
        }
        fs::rename(partial, argv[1]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_manual: %s\n", error.what());
        return 1;
    }
}
