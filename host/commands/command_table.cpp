#include "command_table.h"

#include <array>

namespace tarn {

namespace {

constexpr std::array table{
    Command{
        .name = "--check",
        .usage = "--check FILE... [--json] [--size WxH]... [--over-time]",
        .chinese = u"检查界面文件（或解包的文件夹），逐行列出问题。",
        .english = u"Checks interfaces, packages or folders that they were unpacked into, and lists their problems.",
        .chinese_options = u"  --json        以 JSON 输出\n"
                           u"  --size WxH    还在这个屏幕尺寸下检查布局；可多次给出（默认为设计尺寸）\n"
                           u"  --over-time   还在每个时间轴的各时刻检查布局\n"
                           u"状态：0 没有错误，1 有错误，2 文件无法读取或参数有误。警告不影响状态。\n",
        .english_options = u"  --json        as JSON\n"
                           u"  --size WxH    checks the layout on a screen of that size, in place of the one that the\n"
                           u"                interface was made for; may be given several times\n"
                           u"  --over-time   checks the layout at the times of every timebar, too\n"
                           u"Status 0: no errors; 1: errors; 2: a file cannot be read, or the command line is wrong.\n"
                           u"Warnings do not count.\n",
        .needs_fonts = true,
        .run = run_check},
    Command{.name = "--pack",
            .usage = "--pack FOLDER FILE",
            .chinese = u"把文件夹中解包的界面打包为文件。",
            .english = u"Makes a package of a folder that --unpack wrote.",
            .chinese_options = u"打包前先读取界面；无法打开的内容不会写出。文件夹顶层属于 git 的文件不打包。\n",
            .english_options
            = u"The interface is read first: what could not be opened is not written. What belongs to git at\n"
              u"the top of the folder is left out.\n",
            .needs_fonts = false,
            .run = run_pack},
    Command{.name = "--unpack",
            .usage = "--unpack FILE FOLDER [--replace]",
            .chinese = u"把文件包的条目写成文件夹中的文件，便于版本控制。",
            .english = u"Writes the entries of a package as files of a folder, for version control.",
            .chinese_options = u"  --replace     文件夹中可以有较早的版本：只改写不同的文件，不再存在的文件被删除\n",
            .english_options
            = u"  --replace     the folder may hold an older version: files that differ are written anew, others go\n",
            .needs_fonts = false,
            .run = run_unpack},
    Command{.name = "diff",
            .usage = "diff A B [--json]\ndiff --git PATH OLD HEX MODE NEW HEX MODE",
            .chinese = u"说明两个界面文件（或解包的文件夹）有何不同。",
            .english = u"Tells in words how two interfaces, packages or folders, differ.",
            .chinese_options = u"  --json        以 JSON 输出每个属性和关键帧的确切值\n"
                               u"  --git         由 git 调用时使用（状态总是 0，没有的文件算作空）\n"
                               u"状态：0 相同，1 不同，2 文件无法读取或参数有误。\n",
            .english_options
            = u"  --json        every attribute and key exactly, as JSON\n"
              u"  --git         as git calls a diff driver: status 0, and a file that is not there is empty\n"
              u"Status 0: they are the same; 1: they differ; 2: one cannot be read, or the command line is wrong.\n",
            .needs_fonts = false,
            .run = run_diff},
    Command{.name = "merge",
            .usage = "merge BASE OURS THEIRS -o OUT [--ours|--theirs|--window]",
            .chinese = u"合并同一界面的两个版本，按对象、属性和关键帧。",
            .english = u"Merges two versions of an interface that come from BASE, by objects, attributes and keys.",
            .chinese_options
            = u"  -o OUT        写出的文件包\n"
              u"  --ours        冲突时取 OURS 的值，不算冲突\n"
              u"  --theirs      冲突时取 THEIRS 的值，不算冲突\n"
              u"  --window      有冲突时打开窗口，逐个选择\n"
              u"状态：0 合并完成，1 有冲突（OUT 中为 OURS 的值）或已取消（不写 OUT），2 文件无法读取或参数有误。\n",
            .english_options
            = u"  -o OUT        the package that is written\n"
              u"  --ours        takes the values of OURS where both changed the same\n"
              u"  --theirs      takes those of THEIRS\n"
              u"  --window      lets you choose in a window for each of them\n"
              u"Status 0: merged; 1: both changed the same, which is told, and OUT has what OURS has there, or the\n"
              u"window was cancelled, and OUT is left as it is;\n"
              u"2: a file cannot be read, or the command line is wrong.\n",
            .needs_fonts = false,
            .run = run_merge},
};

} // namespace

std::span<const Command> command_table()
{
    return table;
}

} // namespace tarn
