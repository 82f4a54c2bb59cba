# Writes the code blocks of a Markdown file below the folder `out`, named after the file and numbered; documents that
# must not load, into the folder `mistakes` beside it:
#   cpp, cmake, xml      with the word "file", a file of a project, by the name in its first line
#   cpp                  a source of its own; "cpp more" goes on with the one before
#   xml                  a document; "xml arguments" is a bean's constructor-arg, "xml mistake" must not load
#   sh                   with a word, the commands of that name
#   text                 what a program prints
function open_block(kind, word) {
  if (word == "file") return out "/" name "/"
  if (kind == "cpp" && word == "more") return out "/" name "-" count["cpp"] ".cpp"
  if (kind == "sh") return word == "" ? "" : out "/" name "-" word ".sh"
  ++count[kind word]
  if (kind == "cpp") return out "/" name "-" count["cpp"] ".cpp"
  if (kind == "xml") return out "/" (word == "mistake" ? "../mistakes" : "documents") "/" name word "-" count[kind word] ".xml"
  if (kind == "text") return out "/" name "-" count["text"] ".txt"
  return ""
}
BEGIN {
  head = "<zorbel><library path='lights'><beans><bean name='room' class='lights::CRoom'><constructor-arg>"
  tail = "</constructor-arg></bean></beans></library></zorbel>"
}
/^```/ && !inside { inside = 1; kind = substr($1, 4); word = $2; file = open_block(kind, word)
  if (word == "arguments") print head > file
  next }
/^```/ { inside = 0; if (word == "arguments") print tail > file; next }
inside && word == "file" && file ~ /\/$/ { file = file $2 }
inside && file != "" { print > file }
