#include <string_view>

#include "applescript/Terminology.h"

namespace morla::applescript {
namespace {

/// The same table format as an application's. Commands of the class 'syso' and 'ascr' are carried out by the
/// interpreter, the others by the target.
constexpr std::string_view kTable =
    "class\tapplication\tcapp\n"
    "class\titem\tcobj\n"
    "class\ttext\tctxt\ttexts\n"
    "class\tstring\tctxt\n"
    "class\tunicode text\tctxt\tunicode texts\n"
    "class\tcharacter\tcha \n"
    "class\tword\tcwor\n"
    "class\tparagraph\tcpar\n"
    "class\ttext item\tcitm\n"
    "class\tinteger\tlong\n"
    "class\treal\tdoub\n"
    "class\tnumber\tnmbr\n"
    "class\tboolean\tbool\n"
    "class\tlist\tlist\n"
    "class\trecord\treco\n"
    "class\tfile\tfile\n"
    "class\tPOSIX file\tpsxf\n"
    "class\talias\talis\taliases\n"
    "class\tconstant\tenum\n"
    "class\treference\tobj \n"
    "class\tclass\tpcls\tclasses\n"
    "property\titem\tname\tpnam\ttext\trw\n"
    "property\titem\tid\tID  \tany\tr\n"
    "property\titem\tclass\tpcls\tany\tr\n"
    "property\titem\tproperties\tpALL\trecord\trw\n"
    "property\titem\tcontents\tpcnt\tany\trw\n"
    "property\titem\tversion\tvers\ttext\tr\n"
    "property\tapplication\tfrontmost\tpisf\tboolean\tr\n"
    "property\tapplication\trunning\tprun\tboolean\tr\n"
    "property\tapplication\ttext item delimiters\ttxdl\tlist\trw\n"
    "property\tlist\tlength\tleng\tinteger\tr\n"
    "property\tlist\treverse\trvse\tlist\tr\n"
    "property\tlist\trest\trest\tlist\tr\n"
    "property\ttext\tquoted form\tstrq\ttext\tr\n"
    "property\tfile\tPOSIX path\tpsxp\ttext\tr\n"
    "command\tactivate\tmiscactv\n"
    "command\tlaunch\tascrnoop\n"
    "command\treopen\taevtrapp\n"
    "command\topen\taevtodoc\tany\n"
    "command\tprint\taevtpdoc\tany\n"
    "command\tquit\taevtquit\n"
    "parameter\tquit\tsaving\tsavo\tany\toptional\n"
    "command\tcount\tcorecnte\tspecifier\tinteger\n"
    "parameter\tcount\teach\tkocl\tany\toptional\n"
    "command\texists\tcoredoex\tany\tboolean\n"
    "command\tdelete\tcoredelo\tspecifier\n"
    "command\tclose\tcoreclos\tspecifier\n"
    "parameter\tclose\tsaving\tsavo\tany\toptional\n"
    "parameter\tclose\tsaving in\tkfil\tfile\toptional\n"
    "command\tsave\tcoresave\tspecifier\n"
    "parameter\tsave\tin\tkfil\tfile\toptional\n"
    "parameter\tsave\tas\tfltp\tany\toptional\n"
    "command\tmake\tcorecrel\t\tspecifier\n"
    "parameter\tmake\tnew\tkocl\tany\n"
    "parameter\tmake\tat\tinsh\tspecifier\toptional\n"
    "parameter\tmake\twith data\tdata\tany\toptional\n"
    "parameter\tmake\twith properties\tprdt\trecord\toptional\n"
    "command\tmove\tcoremove\tspecifier\tspecifier\n"
    "parameter\tmove\tto\tinsh\tspecifier\n"
    "command\tduplicate\tcoreclon\tspecifier\tspecifier\n"
    "parameter\tduplicate\tto\tinsh\tspecifier\toptional\n"
    "parameter\tduplicate\twith properties\tprdt\trecord\toptional\n"
    "command\tlog\tascrcmnt\tany\n"
    "command\tdo shell script\tsysoexec\ttext\ttext\n"
    "command\toffset\tsysooffs\t\tinteger\n"
    "parameter\toffset\tof\tpsof\ttext\n"
    "parameter\toffset\tin\tpsin\ttext\n"
    "enumerator\tsave options\tyes\tyes \n"
    "enumerator\tsave options\tno\tno  \n"
    "enumerator\tsave options\task\task \n";

}  // namespace

Terminology const& standardTerms() {
  static Terminology const terms([] {
    DictionaryOrProblem parsed = parseDictionary(kTable);
    return std::make_shared<Dictionary const>(parsed.dictionary ? *std::move(parsed.dictionary) : Dictionary());
  }());
  return terms;
}

}  // namespace morla::applescript
