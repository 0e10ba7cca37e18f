#include "spelling/english_words.h"

#include "spelling/ascii.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace quillmark {
namespace {

// None of these is another word when its apostrophe is left out.
constexpr std::string_view contractions =
    "aren't can't children's could've couldn't didn't doesn't don't hadn't hasn't haven't he's here's how's "
    "I'm I've isn't it'll might've must've mustn't needn't she's should've shouldn't that'd that'll that's "
    "there'd there's they'd they'll they're they've wasn't we've weren't what'll what's where's who's who've "
    "would've wouldn't you'd you'll you're you've";

// None of these is another word in small letters.
constexpr std::string_view names =
    "Monday Tuesday Wednesday Thursday Friday Saturday Sunday January February April June July September "
    "October November December English French German Spanish Italian European American British Christmas "
    "Easter";

// Common misspellings that are too far from the right word, or as close to another one; words run together;
// and some that dictionaries have as rare words or names.
constexpr std::string_view misspellings =
    "abit:a bit, accomodate:accommodate, adn:and, ahve:have, allready:already, allways:always, alot:a lot, "
    "amature:amateur, aquire:acquire, arnt:aren't, assit:assist, aswell:as well, atleast:at least, "
    "basicly:basically, becuase:because, beleive:believe, beond:beyond, calender:calendar, camra:camera, "
    "carribean:Caribbean, circut:circuit, collegue:colleague, collegues:colleagues, colum:column, "
    "concious:conscious, critisism:criticism, critize:criticize, defiantely:definitely, "
    "definately:definitely, definatly:definitely, desparate:desperate, dicuss:discuss, dieing:dying, "
    "dispite:despite, dissapoint:disappoint, doller:dollar, duting:during, eachother:each other, "
    "eigth:eighth, enought:enough, everthing:everything, everytime:every time, excede:exceed, exept:except, "
    "facinate:fascinate, facinating:fascinating, febuary:February, firey:fiery, fourty:forty, "
    "frightend:frightened, futher:further, garantee:guarantee, gaurantee:guarantee, genious:genius, "
    "glamorus:glamorous, grafic:graphic, grammer:grammar, greatful:grateful, happend:happened, "
    "harras:harass, "
    "headake:headache, heros:heroes, highschool:high school, hte:the, hygene:hygiene, hypocracy:hypocrisy, "
    "inbetween:in between, incase:in case, incidently:incidentally, independant:independent, infact:in fact, "
    "innoculate:inoculate, intrest:interest, iwth:with, jelous:jealous, kindergarden:kindergarten, "
    "knowlegable:knowledgeable, knwo:know, konw:know, lazer:laser, liason:liaison, mabe:maybe, "
    "maintainance:maintenance, medeval:medieval, mediteranean:Mediterranean, minature:miniature, "
    "miniscule:minuscule, mischevious:mischievous, mispell:misspell, morgage:mortgage, muscels:muscles, "
    "naibor:neighbor, negociate:negotiate, neice:niece, ninty:ninety, noone:no one, obstical:obstacle, "
    "occurance:occurrence, ofen:often, orgin:origin, paralell:parallel, persue:pursue, playright:playwright, "
    "potatos:potatoes, preceed:precede, prepair:prepare, promiss:promise, pronounciation:pronunciation, "
    "publically:publicly, qualitys:qualities, quew:queue, recource:resource, refered:referred, "
    "rember:remember, restaraunt:restaurant, resturant:restaurant, rythem:rhythm, rythm:rhythm, "
    "rythym:rhythm, sacreligious:sacrilegious, safly:safely, sargent:sergeant, saterday:Saturday, "
    "seach:search, seige:siege, sence:sense, sentance:sentence, shedule:schedule, shoud:should, sieze:seize, "
    "simpley:simply, skedule:schedule, speach:speech, speacial:special, stoped:stopped, stragety:strategy, "
    "supercede:supersede, supprise:surprise, suprise:surprise, tahn:than, taht:that, teh:the, thankyou:thank "
    "you, theri:their, thsi:this, tje:the, tomatos:tomatoes, tommorow:tomorrow, tounge:tongue, "
    "tounges:tongues, tranfer:transfer, truely:truly, tryed:tried, twelth:twelfth, undoubtly:undoubtedly, "
    "untill:until, usally:usually, vaccum:vacuum, vacume:vacuum, varius:various, vehical:vehicle, waht:what, "
    "wendsday:Wednesday, wensday:Wednesday, wether:whether, wheather:whether, whith:with, wich:which, "
    "wierd:weird, wiht:with, yatch:yacht, yoru:your, yuo:you";

// Of computers, and not in dictionaries.
constexpr std::string_view jargon =
    "adb addr apk async backend backends bash bool btrfs cgroup cgroups chmod chown clang cmake codec "
    "codecs config configs const crontab ctags curl datetime deepin dmesg docker dpkg ebpf enum enums env "
    "epoll fdisk flatpak fopen frontend frontends fstab gcc gdb getty github gitlab gitter glibc gnome "
    "goroutine grub gtk gui guis gunzip gzip hostname htop iframe initrd inode inodes inotify int ints "
    "iostream iptables json kde kubectl kwin ldap libc localhost lsof lua malloc metacity mixin mixins "
    "mkdir mmap mutex mutexes mysql namespace ncurses nginx nmap noexcept npm nullptr numpy openssh "
    "openssl overlayfs param params passwd php plugin plugins popen posix printf pthread pthreads pwd "
    "realloc regex regexes repo repos restic rsync rustc samba scanf segfault sigint sigkill stderr stdin "
    "stdlib stdout strace struct structs sudo symlink symlinks syscall syscalls sysctl systemd tarball "
    "tcpdump tmpfs tmux trunc tuple tuples typedef ubuntu uid uids uint ulimit umask uname unix upsert "
    "usleep usr utf valgrind var vars venv vim vlan waitpid wayland wchar webhook webhooks wget wifi wiki "
    "xargs xcode xorg yaml zsh";

// Written so on purpose.
constexpr std::string_view shorthand = "lol omg idk imo imho fyi asap aka afaik ok";

constexpr std::string_view abbreviations =
    "al apr approx aug ave ca capt cf ch cm co col corp dec dept dr ed eq est etc ext feb fig fri ft gal gen "
    "gov hon hr hrs inc jan jr kg km lb lbs lt ltd max mg min mins ml mm mon mr mrs ms mt no nov oct oz pp "
    "prof pt qt rd rev sat sec secs sept sgt sr st sun tbsp tel temp thu tsp tue univ viz vol vs wed yd";

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> parts;
    for (std::size_t end; (end = text.find(separator)) != std::string_view::npos;
         text.remove_prefix(end + separator.size()))
        parts.push_back(text.substr(0, end));
    parts.push_back(text);
    return parts;
}

std::unordered_map<std::string, std::string> allUsualCorrections() {
    std::unordered_map<std::string, std::string> all{{"i", "I"}};
    for (const auto contraction : split(contractions, " ")) {
        auto slip = lowered(contraction);
        std::erase(slip, '\'');
        all.emplace(std::move(slip), contraction);
    }
    for (const auto name : split(names, " "))
        all.emplace(lowered(name), name);
    for (const auto pair : split(misspellings, ", ")) {
        const auto colon = pair.find(':');
        all.emplace(pair.substr(0, colon), pair.substr(colon + 1));
    }
    return all;
}

std::unordered_set<std::string_view> setOf(std::string_view words) {
    const auto parts = split(words, " ");
    return {parts.begin(), parts.end()};
}

} // namespace

std::string lowered(std::string_view word) {
    std::string result(word);
    std::ranges::transform(result, result.begin(), lower);
    return result;
}

std::string usualCorrection(const std::string& word) {
    static const auto all = allUsualCorrections();
    const auto slip = all.find(word);
    return slip != all.end() ? slip->second : std::string();
}

std::vector<std::string> smallNames() {
    std::vector<std::string> small;
    for (const auto name : split(names, " "))
        small.push_back(lowered(name));
    return small;
}

bool isShorthand(std::string_view word) {
    static const auto all = setOf(shorthand);
    constexpr std::size_t longest = 5; // letters, of what has no vowel
    return all.contains(word) ||
           (word.size() <= longest && word.find_first_of("aeiouy'") == std::string_view::npos);
}

bool isJargon(std::string_view word) {
    static const auto all = setOf(jargon);
    return all.contains(word);
}

bool isAbbreviation(std::string_view word) {
    static const auto all = setOf(abbreviations);
    return all.contains(word);
}

} // namespace quillmark
