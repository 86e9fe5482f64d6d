<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropSlider</name>
    <message>
        <source>MIN：</source>
        <translation>Min:</translation>
    </message>
    <message>
        <source>MAX：</source>
        <translation>Max:</translation>
    </message>
    <message>
        <source>默认值：</source>
        <translation>Value:</translation>
    </message>
    <message>
        <source>用户拖动</source>
        <translation>Dragged</translation>
    </message>
    <message>
        <source>删除脚本</source>
        <translation>Remove the script</translation>
    </message>
    <message>
        <source>事件脚本</source>
        <translation>Event scripts</translation>
    </message>
</context>
<context>
    <name>CDlgPropScrollbar</name>
    <message>
        <source>MIN：</source>
        <translation>Min:</translation>
    </message>
    <message>
        <source>MAX：</source>
        <translation>Max:</translation>
    </message>
    <message>
        <source>游标默认值：</source>
        <translation>Position:</translation>
    </message>
    <message>
        <source>页面大小：</source>
        <translation>Page size:</translation>
    </message>
    <message>
        <source>脚本触发值：</source>
        <translation>Value that runs the script:</translation>
    </message>
    <message>
        <source>滑杆值变化</source>
        <translation>Value changed</translation>
    </message>
    <message>
        <source>删除脚本</source>
        <translation>Remove the script</translation>
    </message>
    <message>
        <source>事件脚本</source>
        <translation>Event scripts</translation>
    </message>
</context>
<context>
    <name>CDlgPropEdit</name>
    <message>
        <source>文本：</source>
        <translation>Text:</translation>
    </message>
    <message>
        <source>提示文字：</source>
        <translation>Placeholder:</translation>
    </message>
    <message>
        <source>间距：</source>
        <translation>Spacing:</translation>
    </message>
    <message>
        <source>边框宽度：</source>
        <translation>Border:</translation>
    </message>
    <message>
        <source>最大长度：</source>
        <translation>Longest:</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>仅限数字</source>
        <translation>Numbers only</translation>
    </message>
    <message>
        <source>只读</source>
        <translation>Read only</translation>
    </message>
    <message>
        <source>文字：</source>
        <translation>Letters:</translation>
    </message>
    <message>
        <source>选中背景：</source>
        <translation>Selection:</translation>
    </message>
    <message>
        <source>光标：</source>
        <translation>Caret:</translation>
    </message>
    <message>
        <source>边框：</source>
        <translation>Border:</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Colors</translation>
    </message>
    <message>
        <source>回车按下</source>
        <translation>Enter pressed</translation>
    </message>
    <message>
        <source>删除脚本</source>
        <translation>Remove the script</translation>
    </message>
    <message>
        <source>事件脚本</source>
        <translation>Event scripts</translation>
    </message>
</context>
<context>
    <name>CDlgPropCombo</name>
    <message>
        <source>列表项</source>
        <translation>Items</translation>
    </message>
    <message>
        <source>列表项文字</source>
        <translation>Text of the item</translation>
    </message>
    <message>
        <source>插入项</source>
        <translation>Insert</translation>
    </message>
    <message>
        <source>删除项</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>粘贴</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>把剪贴板中的每一行添加为一项</source>
        <translation>Adds each line of the clipboard as an item</translation>
    </message>
    <message>
        <source>选择改变</source>
        <translation>Selection changed</translation>
    </message>
    <message>
        <source>删除脚本</source>
        <translation>Remove the script</translation>
    </message>
    <message>
        <source>事件脚本</source>
        <translation>Event scripts</translation>
    </message>
</context>
<context>
    <name>CDlgPropListBox</name>
    <message>
        <source>列表项</source>
        <translation>Items</translation>
    </message>
    <message>
        <source>列表项文字</source>
        <translation>Text of the item</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>粘贴</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>把剪贴板中的每一行添加为一项</source>
        <translation>Adds each line of the clipboard as an item</translation>
    </message>
    <message>
        <source>鼠标点击</source>
        <translation>Click</translation>
    </message>
    <message>
        <source>删除脚本</source>
        <translation>Remove the script</translation>
    </message>
    <message>
        <source>鼠标双击</source>
        <translation>Double click</translation>
    </message>
    <message>
        <source>事件脚本</source>
        <translation>Event scripts</translation>
    </message>
</context>
<context>
    <name>CDlgPropPicture</name>
    <message>
        <source>标题：</source>
        <translation>Caption:</translation>
    </message>
    <message>
        <source>水平对齐:</source>
        <translation>Horizontal:</translation>
    </message>
    <message>
        <source>左对齐</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>居中</source>
        <translation>Center</translation>
    </message>
    <message>
        <source>右对齐</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>垂直对齐:</source>
        <translation>Vertical:</translation>
    </message>
    <message>
        <source>顶对齐</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>中间</source>
        <translation>Middle</translation>
    </message>
    <message>
        <source>底对齐</source>
        <translation>Bottom</translation>
    </message>
    <message>
        <source>图片：</source>
        <translation>Picture:</translation>
    </message>
    <message>
        <source>选择图片</source>
        <translation>Choose a picture</translation>
    </message>
    <message>
        <source>清除图片</source>
        <translation>Remove the picture</translation>
    </message>
    <message>
        <source>拉伸图片</source>
        <translation>Stretch the picture</translation>
    </message>
    <message>
        <source>设置尺寸到贴图</source>
        <translation>Size to picture</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Picture</translation>
    </message>
</context>
<context>
    <name>CDlgPropPictureInPicture</name>
    <message>
        <source>摄像机：</source>
        <translation>Camera:</translation>
    </message>
    <message>
        <source>选择物体</source>
        <translation>Choose an object</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>背景颜色：</source>
        <translation>Background:</translation>
    </message>
    <message>
        <source>显示边框</source>
        <translation>Show the frame</translation>
    </message>
</context>
<context>
    <name>CDlgPropMap</name>
    <message>
        <source>地图贴图：</source>
        <translation>Map:</translation>
    </message>
    <message>
        <source>选择图片</source>
        <translation>Choose a picture</translation>
    </message>
    <message>
        <source>清除图片</source>
        <translation>Remove the picture</translation>
    </message>
    <message>
        <source>地图表面：</source>
        <translation>Surface:</translation>
    </message>
    <message>
        <source>地图底色：</source>
        <translation>Base:</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>上</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>左</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>下</source>
        <translation>Bottom</translation>
    </message>
    <message>
        <source>右</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>导航范围设置</source>
        <translation>Range in the world</translation>
    </message>
    <message>
        <source>角色导航中心显示：锁定</source>
        <translation>Keep figure in the middle</translation>
    </message>
    <message>
        <source>默认缩放比例:</source>
        <translation>Scale:</translation>
    </message>
    <message>
        <source>导航图缩放率:</source>
        <translation>Zoom rate:</translation>
    </message>
    <message>
        <source>导航图放大按钮位置</source>
        <translation>Zoom-in button</translation>
    </message>
    <message>
        <source>导航图放大按钮位置 X</source>
        <translation>Zoom-in button, X</translation>
    </message>
    <message>
        <source>导航图放大按钮位置 Y</source>
        <translation>Zoom-in button, Y</translation>
    </message>
    <message>
        <source>导航图缩小按钮位置</source>
        <translation>Zoom-out button</translation>
    </message>
    <message>
        <source>导航图缩小按钮位置 X</source>
        <translation>Zoom-out button, X</translation>
    </message>
    <message>
        <source>导航图缩小按钮位置 Y</source>
        <translation>Zoom-out button, Y</translation>
    </message>
    <message>
        <source>缩放</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>使用鹰眼模式</source>
        <translation>Use the eagle's eye</translation>
    </message>
    <message>
        <source>碰撞模型：</source>
        <translation>Collides with:</translation>
    </message>
    <message>
        <source>选择物体</source>
        <translation>Choose an object</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>鹰眼模式</source>
        <translation>Eagle's eye</translation>
    </message>
    <message>
        <source>导航图热点出现</source>
        <translation>Hot spot shown</translation>
    </message>
    <message>
        <source>删除脚本</source>
        <translation>Remove the script</translation>
    </message>
    <message>
        <source>导航图热点消失</source>
        <translation>Hot spot hidden</translation>
    </message>
    <message>
        <source>导航图物体提示点击</source>
        <translation>Object hint clicked</translation>
    </message>
    <message>
        <source>事件脚本</source>
        <translation>Event scripts</translation>
    </message>
</context>
<context>
    <name>CDlgPropFlash</name>
    <message>
        <source>添加本地文件</source>
        <translation>Add a local file</translation>
    </message>
    <message>
        <source>添加网络文件</source>
        <translation>Add from the network</translation>
    </message>
    <message>
        <source>撤销许可</source>
        <translation>Take Back</translation>
    </message>
    <message>
        <source>本机不再加载此网址，预览会重新询问</source>
        <translation>The address is no longer loaded on this machine; a preview asks again</translation>
    </message>
    <message>
        <source>导入FLASH</source>
        <translation>Movie</translation>
    </message>
    <message>
        <source>高优先级下载</source>
        <translation>Download first</translation>
    </message>
    <message>
        <source>调用脚本下载</source>
        <translation>Download by a script</translation>
    </message>
    <message>
        <source>保持原始大小</source>
        <translation>Keep the original size</translation>
    </message>
    <message>
        <source>开启背景透明</source>
        <translation>Transparent background</translation>
    </message>
    <message>
        <source>保持全局属性</source>
        <translation>Keep global settings</translation>
    </message>
    <message>
        <source>开启鼠标交互</source>
        <translation>Takes the mouse</translation>
    </message>
    <message>
        <source>开启键盘交互</source>
        <translation>Takes the keyboard</translation>
    </message>
    <message>
        <source>支持中文字符</source>
        <translation>Chinese characters</translation>
    </message>
    <message>
        <source>透明度：</source>
        <translation>Translucency:</translation>
    </message>
    <message>
        <source>FLASH TARN属性</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>双击打开函数</source>
        <translation>A double click opens the function</translation>
    </message>
    <message>
        <source>创建函数</source>
        <translation>Create</translation>
    </message>
    <message>
        <source>删除函数</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>TARN_CallBack 函数</source>
        <translation>TARN_CallBack functions</translation>
    </message>
</context>
<context>
    <name>CDlgSelObjs</name>
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
