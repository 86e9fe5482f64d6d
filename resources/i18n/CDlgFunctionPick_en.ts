<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgFunctionPick</name>
    <message>
        <source>筛选，或新函数的名称</source>
        <translation>Filter, or a new function's name</translation>
    </message>
    <message>
        <source>新建</source>
        <translation>New</translation>
    </message>
    <message>
        <source>新建函数：以上方的名称，或由脚本关键帧命名</source>
        <translation>A new function: of the name above, or of one made for the script key</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
</TS>
